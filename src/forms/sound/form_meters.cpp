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

FormMeters::FormMeters(QWidget* owner) : QWidget(owner, Qt::Window) {
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
  caption(2, QStringLiteral("Peak\n"), QStringLiteral("Decibels of full scale, and the reading in sample units"));
  caption(3, QStringLiteral("Average\n"), QStringLiteral("Decibels of full scale, and the reading in sample units"));
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

void FormMeters::Refresh(const SoundLevels& levels, double now) {
  state_->setVisible(!levels.live);
  ShowSide(sides_[0], levels, levels.peakL, levels.avgL, now);
  ShowSide(sides_[1], levels, levels.peakR, levels.avgR, now);
}

void FormMeters::ShowSide(Side& side, const SoundLevels& levels, double peak, double average, double now) {
  side.mark.Update(DecibelsFullScale(peak), now);
  side.bar->Show(DecibelsFullScale(peak), DecibelsFullScale(average), side.mark.Level());
  side.peak->setText(levels.live ? ReadingText(peak) : QStringLiteral("-\n"));
  side.average->setText(levels.live ? ReadingText(average) : QStringLiteral("-\n"));
}

}  // namespace tarvolt
