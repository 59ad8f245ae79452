// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/load/form_selective_load.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/qt_text.h"

namespace tarvolt {
namespace {

/// A label may be as long as the file wants it; the form may not.
constexpr int kLabelWidth = 320;

}  // namespace

FormSelectiveLoad::FormSelectiveLoad(const ChannelQuestion& question, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("FormSelectiveLoad"));
  setWindowTitle(QStringLiteral("Load Selected Channels"));
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(16);
  grid->setColumnStretch(1, 1);
  layout->addLayout(grid);
  for (int channel = 0; channel < kChannels; ++channel) {
    auto* box = new QCheckBox(QStringLiteral("CH&%1").arg(channel + 1), this);
    box->setObjectName(QStringLiteral("ChkCH%1").arg(channel + 1));
    box->setChecked(question.ticked[channel]);
    box->setEnabled(channel < question.channels);
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("lblCH%1").arg(channel + 1));
    label->setTextFormat(Qt::PlainText);
    const QString text = ToQString(question.labels[channel]).simplified();
    label->setText(label->fontMetrics().elidedText(text, Qt::ElideRight, kLabelWidth));
    label->setEnabled(channel < question.channels);
    grid->addWidget(box, channel, 0);
    grid->addWidget(label, channel, 1);
    channels_[channel] = box;
  }
  offsets_ = new QCheckBox(QStringLiteral("Add the channel offsets of this &station."), this);
  offsets_->setObjectName(QStringLiteral("ChkOffsets"));
  offsets_->setChecked(question.localOffsets);
  layout->addSpacing(8);
  layout->addWidget(offsets_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  layout->addStretch();
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
}

ChannelAnswer FormSelectiveLoad::Answer() const {
  ChannelAnswer answer;
  for (int channel = 0; channel < kChannels; ++channel) answer.ticked[channel] = channels_[channel]->isChecked();
  answer.localOffsets = offsets_->isChecked();
  return answer;
}

}  // namespace tarvolt
