// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/chart_status_bar.h"

#include "forms/qt_text.h"

namespace tarvolt {

ChartStatusBar::ChartStatusBar(QWidget* parent) : QStatusBar(parent) {
  left_ = Label("lblLeftStatus", 5);
  status_ = Label("lblStatus", 9);
  right_ = Label("lblRightStatus", 3);
  right_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

QLabel* ChartStatusBar::Label(const char* name, int stretch) {
  auto* label = new QLabel(this);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  label->setMinimumWidth(40);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  addWidget(label, stretch);
  return label;
}

void ChartStatusBar::Refresh(const WindowState& view) {
  setVisible(view.StatusBarShown);
  left_->setText(ToQString(view.LeftStatus));
  status_->setText(ToQString(view.Status.Text()));
  status_->setToolTip(status_->text());
  right_->setText(ToQString(view.RightStatus));
}

}  // namespace tarvolt
