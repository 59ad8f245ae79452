// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_main/offset_frame.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <functional>

#include "forms/qt_text.h"

namespace tarvolt {
namespace {

QToolButton* Button(QFrame* frame, const char* name, const QString& caption, const QString& tip) {
  auto* button = new QToolButton(frame);
  button->setObjectName(QString::fromLatin1(name));
  button->setText(caption);
  button->setToolTip(tip);
  button->setFocusPolicy(Qt::NoFocus);
  frame->layout()->addWidget(button);
  return button;
}

}  // namespace

OffsetFrame::OffsetFrame(const ChartWindow& window, ChannelOffsets& offsets, QWidget* parent)
    : QFrame(parent), window_(window), offsets_(offsets) {
  setObjectName(QStringLiteral("FrameOffset"));
  setFrameShape(QFrame::StyledPanel);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 2, 6, 2);
  layout->addWidget(new QLabel(QStringLiteral("Offset of"), this));
  connect(Button(this, "cmdCHDown", QStringLiteral("\u25C0"), QStringLiteral("Channel before")), &QToolButton::clicked,
          this, [this] { offsets_.cmdCHDown(); });
  channel_ = new QLabel(this);
  channel_->setObjectName(QStringLiteral("lblOffsetChannel"));
  layout->addWidget(channel_);
  connect(Button(this, "cmdChUp", QStringLiteral("\u25B6"), QStringLiteral("Next channel")), &QToolButton::clicked,
          this, [this] { offsets_.cmdChUp(); });
  value_ = new QLineEdit(this);
  value_->setObjectName(QStringLiteral("TxtOffset"));
  value_->setMaximumWidth(140);
  layout->addWidget(value_);
  connect(value_, &QLineEdit::editingFinished, this, [this] {
    if (value_->isModified()) offsets_.TxtOffset(FromQString(value_->text()));
    value_->setModified(false);
  });
  QToolButton* down = Button(this, "cmdOffsetDown", QStringLiteral("\u2212"), QStringLiteral("Lower; hold to repeat"));
  QToolButton* up = Button(this, "cmdOffSetUp", QStringLiteral("+"), QStringLiteral("Raise; hold to repeat"));
  connect(down, &QToolButton::pressed, this, [this] { offsets_.ButtonDown(-1); });
  connect(up, &QToolButton::pressed, this, [this] { offsets_.ButtonDown(1); });
  for (QToolButton* button : {down, up}) connect(button, &QToolButton::released, this, [this] { offsets_.ButtonUp(); });
  layout->addStretch();
  hide();
}

void OffsetFrame::Refresh() {
  setVisible(window_.view.OffsetFrameShown);
  channel_->setText(QStringLiteral("CH%1").arg(window_.view.OffsetChannel + 1));
  const QString text = ToQString(window_.view.OffsetText);
  if (!value_->isModified() && value_->text() != text) value_->setText(text);
}

}  // namespace tarvolt
