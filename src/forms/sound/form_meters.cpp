// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/sound/form_meters.h"

#include <QGridLayout>

#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {
namespace {

QString ReadingText(double counts) {
  const double decibels = DecibelsFullScale(counts);
  const QString level = decibels <= kLowestDecibels ? QStringLiteral("silent")
                                                    : ToQString(FormatNumber(decibels, "0.0")) + QStringLiteral(" dB");
  return level + QStringLiteral("\n") + ToQString(FormatNumber(counts, "0"));
}

}  // namespace

FormMeters::FormMeters(LevelFeed& feed, QWidget* owner) : QWidget(owner, Qt::Window), feed_(feed) {
  setObjectName(QStringLiteral("FormMeters"));
  setWindowTitle(QStringLiteral("Sound Levels"));
  auto* grid = new QGridLayout(this);
  grid->setHorizontalSpacing(14);
  const QFontMetrics metrics(font());
  const auto caption = [&](int row, const QString& text, const QString& tip) {
    auto* label = new QLabel(text, this);
    label->setToolTip(tip);
    grid->addWidget(label, row, 0);
  };
  caption(2, QStringLiteral("Peak\n"),
          QStringLiteral("What the chart reads: the mean of the highest samples of ten parts of a buffer, above the "
                         "background, in decibels of full scale and in sample units"));
  caption(3, QStringLiteral("Average\n"),
          QStringLiteral("What the chart reads, above the background, in decibels of full scale and in sample units"));
  AddSide(0, QStringLiteral("Left"));
  AddSide(1, QStringLiteral("Right"));
  grid->setRowStretch(1, 1);
  for (int column : {1, 2}) {
    grid->setColumnStretch(column, 1);
    grid->setColumnMinimumWidth(column, metrics.horizontalAdvance(QStringLiteral("-100.0 dB__")));
  }
  state_ = new QLabel(this);
  state_->setObjectName(QStringLiteral("LblSoundState"));
  state_->setText(QStringLiteral("No sound is being recorded."));
  QSizePolicy keepsRoom = state_->sizePolicy();
  keepsRoom.setRetainSizeWhenHidden(true);
  state_->setSizePolicy(keepsRoom);
  grid->addWidget(state_, 4, 0, 1, 3);
}

FormMeters::~FormMeters() {
  feed_.active = false;
}

void FormMeters::AddSide(int side, const QString& title) {
  auto* grid = static_cast<QGridLayout*>(layout());
  const QString suffix = side == 0 ? QStringLiteral("L") : QStringLiteral("R");
  auto* caption = new QLabel(title, this);
  caption->setAlignment(Qt::AlignCenter);
  grid->addWidget(caption, 0, side + 1);
  Side& parts = sides_[side];
  parts.bar = new LevelBar(this);
  parts.bar->setObjectName(QStringLiteral("Bar") + suffix);
  grid->addWidget(parts.bar, 1, side + 1);
  const auto reading = [&](int row, const QString& name) {
    auto* label = new QLabel(this);
    label->setObjectName(name + suffix);
    label->setAlignment(Qt::AlignRight | Qt::AlignTop);
    grid->addWidget(label, row, side + 1);
    return label;
  };
  parts.peak = reading(2, QStringLiteral("LblPeak"));
  parts.average = reading(3, QStringLiteral("LblAvg"));
}

void FormMeters::showEvent(QShowEvent* event) {
  feed_.BeginAnew();
  feed_.active = true;
  QWidget::showEvent(event);
}

void FormMeters::hideEvent(QHideEvent* event) {
  feed_.active = false;
  QWidget::hideEvent(event);
}

void FormMeters::Refresh(const SoundLevels& levels, double now) {
  state_->setText(levels.lost ? QStringLiteral("The sound input is lost.")
                              : QStringLiteral("No sound is being recorded."));
  state_->setVisible(!levels.live || levels.lost);
  const bool delivers = levels.live && !levels.lost;
  if (!delivers || feed_.buffers > 0) {
    TakeHighest(sides_[0], delivers && levels.hasL ? feed_.highL : 0, now);
    TakeHighest(sides_[1], delivers && levels.hasR ? feed_.highR : 0, now);
    feed_.BeginAnew();
  }
  ShowSide(sides_[0], {delivers && levels.hasL, levels.peakL, levels.avgL}, now);
  ShowSide(sides_[1], {delivers && levels.hasR, levels.peakR, levels.avgR}, now);
}

void FormMeters::TakeHighest(Side& side, std::int32_t highest, double now) {
  constexpr std::int32_t kEndOfScale = 32767;
  side.highest = DecibelsFullScale(highest);
  if (highest >= kEndOfScale) side.clippedAt = now;
}

void FormMeters::ShowSide(Side& side, const Reading& reading, double now) {
  constexpr double kClipShown = 3000;  // milliseconds
  side.mark.Update(side.highest, now);
  const double average = reading.live ? DecibelsFullScale(reading.average) : kLowestDecibels;
  const bool clips = side.clippedAt > 0 && now - side.clippedAt < kClipShown;
  side.bar->Show(side.highest, average, side.mark.Level(), clips);
  side.peak->setText(reading.live ? ReadingText(reading.peak) : QStringLiteral("-\n"));
  side.average->setText(reading.live ? ReadingText(reading.average) : QStringLiteral("-\n"));
}

}  // namespace tarvolt
