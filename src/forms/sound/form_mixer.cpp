// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/sound/form_mixer.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

#include "forms/qt_text.h"

namespace tarvolt {
namespace {

constexpr int kLookMilliseconds = 1000;
constexpr int kSettleMilliseconds = 100;

// Such as "MicVol" of "Mic".
QString NameOf(int source) {
  return QString::fromLatin1(MixerSourceName(source)).remove(QLatin1Char(' '));
}

}  // namespace

FormMixer::FormMixer(Session& session, SoundDesk& desk, QWidget* owner)
    : QDialog(owner), session_(session), desk_(desk) {
  setObjectName(QStringLiteral("FormMixer"));
  setWindowTitle(QStringLiteral("Tarvolt Mixer"));
  auto* layout = new QVBoxLayout(this);
  card_ = new QLabel(this);
  card_->setObjectName(QStringLiteral("LblMixerCard"));
  card_->setTextFormat(Qt::PlainText);
  card_->setWordWrap(true);
  layout->addWidget(card_);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(12);
  for (int source = 0; source < kMixerSources; ++source) AddRow(*grid, source);
  grid->setColumnStretch(1, 1);
  layout->addLayout(grid);
  enabled_ = new QCheckBox(QStringLiteral("&Set the mixer of the card"), this);
  enabled_->setObjectName(QStringLiteral("ChkMixerEnabled"));
  enabled_->setToolTip(QStringLiteral("Without it the card's mixer is left to other programs."));
  layout->addWidget(enabled_);
  words_ = new QLabel(this);
  words_->setObjectName(QStringLiteral("LblMixer"));
  words_->setWordWrap(true);
  layout->addWidget(words_);
  layout->addStretch();
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  ok_ = new QPushButton(QStringLiteral("OK"), this);
  ok_->setObjectName(QStringLiteral("cmdOK"));
  ok_->setDefault(true);
  buttons->addWidget(ok_);
  layout->addLayout(buttons);
  connect(ok_, &QPushButton::clicked, this, [this] { close(); });
  connect(enabled_, &QCheckBox::toggled, this, [this](bool on) {
    if (showing_) return;
    SetMixerEnabled(session_, on);
    Refresh();
  });
  connect(&look_, &QTimer::timeout, this, [this] { Refresh(); });
  settle_.setSingleShot(true);
  settle_.setInterval(kSettleMilliseconds);
  connect(&settle_, &QTimer::timeout, this, [this] { SetTurned(); });
  resize(440, 250);
}

void FormMixer::AddRow(QGridLayout& grid, int source) {
  Row& row = rows_[source];
  row.chosen = new QRadioButton(QString::fromLatin1(MixerSourceName(source)), this);
  row.chosen->setObjectName(QStringLiteral("Opt") + NameOf(source));
  row.volume = new QSlider(Qt::Horizontal, this);
  row.volume->setObjectName(QStringLiteral("Sld") + NameOf(source) + QStringLiteral("Vol"));
  row.volume->setRange(0, 100);
  row.volume->setPageStep(5);
  row.number = new QLabel(this);
  row.number->setObjectName(QStringLiteral("Lbl") + NameOf(source) + QStringLiteral("Vol"));
  row.number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row.number->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("100_")));
  grid.addWidget(row.chosen, source, 0);
  grid.addWidget(row.volume, source, 1);
  grid.addWidget(row.number, source, 2);
  connect(row.chosen, &QRadioButton::toggled, this, [this, source](bool on) {
    if (showing_ || !on) return;
    desk_.ChooseMixerSource(source);
    Refresh();
  });
  connect(row.volume, &QSlider::valueChanged, this, [this, source](int volume) {
    if (showing_) return;
    rows_[source].number->setText(QString::number(volume));
    if (turned_ != source) SetTurned();
    turned_ = source;
    settle_.start();
  });
}

// A slider that is dragged passes many volumes: the one where it rests for a moment is set and kept.
void FormMixer::SetTurned() {
  settle_.stop();
  if (turned_ < 0) return;
  const int source = std::exchange(turned_, -1);
  SetMixerVolume(session_, source, rows_[source].volume->value());
}

void FormMixer::Refresh() {
  SetTurned();
  const MixerView view = ReadMixer(session_);
  showing_ = true;
  card_->setText(QStringLiteral("Sound card: ") + ToQString(session_.settings.sound.SoundCardName));
  enabled_->setChecked(view.enabled);
  enabled_->setEnabled(view.hasMixer);
  for (int source = 0; source < kMixerSources; ++source) ShowRow(source, view);
  const QString none = QStringLiteral("This card has no mixer that can be set here, or does not answer. ");
  const QString background =
      QStringLiteral("The input also selects the background that is subtracted: %1 on the left, %2 on the right.")
          .arg(view.backgroundL)
          .arg(view.backgroundR);
  words_->setText((view.hasMixer ? QString() : none) + background);
  showing_ = false;
}

// A card without any mixer lets the input be chosen, for the backgrounds; one with a mixer only those that it has.
void FormMixer::ShowRow(int source, const MixerView& view) {
  const Row& row = rows_[source];
  const MixerInput& input = view.inputs[source];
  row.chosen->setEnabled(input.there || !view.hasMixer);
  row.chosen->setToolTip(input.there ? QStringLiteral("The card calls it ") + ToQString(input.name) : QString());
  row.chosen->setChecked(source == view.source);
  row.volume->setEnabled(input.hasVolume && view.enabled);
  if (!row.volume->isSliderDown()) row.volume->setValue(input.volume);
  row.number->setText(input.hasVolume ? QString::number(row.volume->value()) : QStringLiteral("-"));
  row.number->setEnabled(input.hasVolume);
}

void FormMixer::showEvent(QShowEvent* event) {
  Refresh();
  look_.start(kLookMilliseconds);
  QDialog::showEvent(event);
}

void FormMixer::hideEvent(QHideEvent* event) {
  SetTurned();
  look_.stop();
  QDialog::hideEvent(event);
}

}  // namespace tarvolt
