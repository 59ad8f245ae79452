// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/sound/form_spectrum.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "forms/plot/qcp.h"
#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr double kBottom = -130;
constexpr double kTop = 3;
constexpr int kMostAveraged = 1000;
constexpr std::size_t kMostWaiting = 8;  // transforms; a screen that draws slower than that loses some
constexpr double kLowestShown = -200;
constexpr double kHighestShown = 20;
constexpr double kLeastBinsShown = 8;
constexpr int kPeakLighter = 190;  // percent, so that held peaks stand apart from the level in front of them

QString SideName(int side) {
  return side == 0 ? QStringLiteral("Left") : QStringLiteral("Right");
}

QColor ColorOfSide(int side) {
  return side == 0 ? QColor(0x00, 0x5a, 0xb5) : QColor(0xc2, 0x4a, 0x00);
}

}  // namespace

FormSpectrum::FormSpectrum(SpectrumFeed& feed, SettingsStore& store, QWidget* owner)
    : QWidget(owner, Qt::Window), feed_(feed), store_(store) {
  setObjectName(QStringLiteral("FormSpectrum"));
  setWindowTitle(QStringLiteral("Sound Spectrum"));
  auto* layout = new QVBoxLayout(this);
  plot_ = new QCustomPlot(this);
  plot_->setObjectName(QStringLiteral("PltSpectrum"));
  MakePlot();
  MakeControls();
  layout->addWidget(plot_, 1);
  MakeAnew();
  resize(QSize(860, 480).boundedTo(screen()->availableSize()));
}

FormSpectrum::~FormSpectrum() {
  feed_.SpectrumActive = false;
  feed_.receive = {};
}

void FormSpectrum::MakeControls() {
  auto* row = new QHBoxLayout;
  const auto captioned = [&](const QString& caption, QWidget* field, const char* name) {
    auto* label = new QLabel(caption, this);
    label->setBuddy(field);
    field->setObjectName(QString::fromLatin1(name));
    row->addWidget(label);
    row->addWidget(field);
  };
  size_ = new QComboBox(this);
  for (const int samples : {1024, 2048, 4096, 8192, 16384}) size_->addItem(QString::number(samples), samples);
  captioned(QStringLiteral("&Samples"), size_, "CboSize");
  weights_ = new QComboBox(this);
  weights_->addItems({QStringLiteral("Hann"), QStringLiteral("Blackman"), QStringLiteral("Rectangular")});
  captioned(QStringLiteral("&Window"), weights_, "CboWindow");
  average_ = new QSpinBox(this);
  average_->setRange(1, kMostAveraged);
  average_->setToolTip(QStringLiteral("Mean over so many transforms; 1 for none"));
  captioned(QStringLiteral("&Average"), average_, "SpnAverage");
  peakHold_ = new QCheckBox(QStringLiteral("&Peak hold"), this);
  peakHold_->setObjectName(QStringLiteral("ChkPeakHold"));
  row->addWidget(peakHold_);
  auto* clear = new QPushButton(QStringLiteral("&Clear"), this);
  clear->setObjectName(QStringLiteral("cmdClear"));
  clear->setToolTip(QStringLiteral("Begins the mean and the held peaks anew"));
  row->addWidget(clear);
  row->addStretch();
  const auto label = [&](const char* name) {
    auto* words = new QLabel(this);
    words->setObjectName(QString::fromLatin1(name));
    return words;
  };
  state_ = label("LblSpectrumState");
  state_->setText(QStringLiteral("No sound is being recorded."));
  strongest_ = label("LblStrongest");
  atPointer_ = label("LblPointer");
  auto* below = new QHBoxLayout;
  below->addWidget(state_);
  below->addWidget(strongest_);
  below->addStretch();
  below->addWidget(atPointer_);
  auto* column = static_cast<QVBoxLayout*>(layout());
  column->addLayout(row);
  column->addLayout(below);
  RestoreSettings();
  connect(size_, &QComboBox::currentIndexChanged, this, [this] {
    MakeAnew();
    StoreSettings();
  });
  connect(weights_, &QComboBox::currentIndexChanged, this, [this] {
    TakeSettings();
    Clear();
    StoreSettings();
  });
  connect(average_, &QSpinBox::valueChanged, this, [this](int transforms) {
    for (Side& side : sides_) side.spectrum->SetAveraging(transforms);
    StoreSettings();
  });
  connect(peakHold_, &QCheckBox::toggled, this, [this] {
    for (Side& side : sides_) side.spectrum->ClearPeaks();
    Draw();
    StoreSettings();
  });
  connect(clear, &QPushButton::clicked, this, [this] { Clear(); });
}

void FormSpectrum::MakePlot() {
  plot_->xAxis->setLabel(QStringLiteral("Frequency in Hz"));
  plot_->xAxis->setNumberFormat(QStringLiteral("f"));
  plot_->xAxis->setNumberPrecision(0);
  plot_->yAxis->setLabel(QStringLiteral("dB of full scale"));
  plot_->yAxis->setRange(kBottom, kTop);
  plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
  plot_->setNoAntialiasingOnDrag(true);
  plot_->setMinimumHeight(160);
  const auto add = [&](const QColor& color, const QString& name) {
    QCPGraph* graph = plot_->addGraph();
    graph->setPen(QPen(color, 1));
    graph->setAntialiased(false);
    graph->setName(name);
    return graph;
  };
  for (int side = 0; side < 2; ++side) {
    sides_[side].peak = add(ColorOfSide(side).lighter(kPeakLighter), SideName(side) + QStringLiteral(", peak"));
  }
  for (int side = 0; side < 2; ++side) sides_[side].level = add(ColorOfSide(side), SideName(side));
  plot_->legend->setVisible(true);
  plot_->setToolTip(
      QStringLiteral("Wheel zooms, drag moves: frequencies, or decibels left of the plot. Double click shows all."));
  connect(plot_, &QCustomPlot::mouseDoubleClick, this, [this] { ShowAll(); });
  connect(plot_, &QCustomPlot::mouseWheel, this,
          [this](const QWheelEvent* event) { TurnWheelAndDrag(event->position()); });
  connect(plot_, &QCustomPlot::mousePress, this,
          [this](const QMouseEvent* event) { TurnWheelAndDrag(event->position()); });
  connect(plot_, &QCustomPlot::mouseMove, this, [this](const QMouseEvent* event) {
    pointer_ = plot_->xAxis->pixelToCoord(event->position().x());
    ShowPointer();
  });
  for (const QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
    connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, [this] { HoldToScale(); });
  }
  plot_->installEventFilter(this);
}

void FormSpectrum::ShowAll() {
  plot_->xAxis->setRange(0, rate_ / 2);
  plot_->yAxis->setRange(kBottom, kTop);
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

// Beside the plot the wheel and a drag are for decibels, elsewhere for frequencies.
void FormSpectrum::TurnWheelAndDrag(const QPointF& pointer) {
  const bool isOnDecibels = pointer.x() < plot_->axisRect()->left();
  plot_->axisRect()->setRangeZoom(isOnDecibels ? Qt::Vertical : Qt::Horizontal);
  plot_->axisRect()->setRangeDrag(isOnDecibels ? Qt::Vertical : Qt::Horizontal);
}

// Neither axis leaves what there is to see, nor shrinks to nothing. A range that is moved keeps its width.
void FormSpectrum::HoldToScale() {
  const auto hold = [](QCPAxis& axis, double low, double high, double least) {
    const QCPRange now = axis.range();
    const double size = std::clamp(now.size(), least, high - low);
    const double from = std::clamp(now.center() - size / 2, low, high - size);
    const QSignalBlocker once(axis);
    axis.setRange(from, from + size);
  };
  if (rate_ > 0) hold(*plot_->xAxis, 0, rate_ / 2, kLeastBinsShown * rate_ / size_->currentData().toInt());
  hold(*plot_->yAxis, kLowestShown, kHighestShown, 1);
}

bool FormSpectrum::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Leave) {
    pointer_.reset();
    ShowPointer();
  }
  return QWidget::eventFilter(watched, event);
}

// Buffers of the new size; what is on its way in those of the old one is dropped.
void FormSpectrum::MakeAnew() {
  const auto size = static_cast<std::size_t>(size_->currentData().toInt());
  for (Side& side : sides_) {
    side.spectrum = std::make_unique<Spectrum>(size);
    side.waiting.clear();
  }
  feed_.SpectrumBufL.assign(size, 0);
  feed_.SpectrumBufR.assign(size, 0);
  feed_.BeginAnew();
  feed_.SpectrumSize = static_cast<std::int32_t>(size);
  TakeSettings();
  Draw();
}

void FormSpectrum::TakeSettings() {
  for (Side& side : sides_) {
    side.spectrum->SetWeights(static_cast<SpectrumWeights>(weights_->currentIndex()));
    side.spectrum->SetAveraging(average_->value());
  }
}

// A stored choice that the lists do not have leaves the first one.
void FormSpectrum::RestoreSettings() {
  const auto stored = [this](const char* key) { return store_.GetSetting(Section::Settings, key); };
  size_->setCurrentText(ToQString(stored("SpectrumSamples")));
  weights_->setCurrentText(ToQString(stored("SpectrumWindow")));
  average_->setValue(static_cast<int>(ValLong(stored("SpectrumAverage"))));
  peakHold_->setChecked(stored("SpectrumPeakHold") == "True");
}

void FormSpectrum::StoreSettings() {
  store_.BeginBatch();
  store_.SaveSetting(Section::Settings, "SpectrumSamples", FromQString(size_->currentText()));
  store_.SaveSetting(Section::Settings, "SpectrumWindow", FromQString(weights_->currentText()));
  store_.SaveSetting(Section::Settings, "SpectrumAverage", NumberText(std::int64_t{average_->value()}));
  store_.SaveSetting(Section::Settings, "SpectrumPeakHold", peakHold_->isChecked() ? "True" : "False");
  store_.EndBatch();
}

void FormSpectrum::Clear() {
  for (Side& side : sides_) {
    side.spectrum->Clear();
    side.waiting.clear();
  }
  Draw();
}

void FormSpectrum::showEvent(QShowEvent* event) {
  feed_.receive = [this](int side, const std::vector<double>& left, const std::vector<double>& right) {
    Take(side, left, right);
  };
  feed_.BeginAnew();
  feed_.SpectrumActive = true;
  QWidget::showEvent(event);
}

// A window that is only minimised needs no samples either, and keeps what it has gathered.
void FormSpectrum::hideEvent(QHideEvent* event) {
  feed_.SpectrumActive = false;
  if (!event->spontaneous()) Clear();
  QWidget::hideEvent(event);
}

// Called inside the handler of a sound buffer: it only keeps the samples.
void FormSpectrum::Take(int side, const std::vector<double>& left, const std::vector<double>& right) {
  constexpr int kBoth = 2;
  const auto keep = [](Side& taker, const std::vector<double>& samples) {
    if (taker.waiting.size() < kMostWaiting) taker.waiting.push_back(samples);
  };
  if (side == 0 || side == kBoth) keep(sides_[0], left);
  if (side == 1 || side == kBoth) keep(sides_[1], right);
}

void FormSpectrum::Refresh(double samplesPerSecond, const SoundLevels& levels) {
  bool fresh = false;
  if (samplesPerSecond != rate_) {
    rate_ = samplesPerSecond;
    Clear();
    ShowAll();
  }
  for (Side& side : sides_) {
    for (const std::vector<double>& samples : side.waiting) side.spectrum->Add(samples);
    fresh = fresh || !side.waiting.empty();
    side.waiting.clear();
  }
  if (fresh) Draw();
  ShowState(levels);
}

void FormSpectrum::Draw() {
  for (Side& side : sides_) {
    const std::vector<double> levels = side.spectrum->Levels();
    const std::vector<double> peaks = peakHold_->isChecked() ? side.spectrum->Peaks() : std::vector<double>();
    QVector<double> hertz(static_cast<qsizetype>(levels.size()));
    for (qsizetype bin = 0; bin < hertz.size(); ++bin) {
      hertz[bin] = side.spectrum->HertzOf(static_cast<double>(bin), rate_);
    }
    const auto show = [&](QCPGraph& graph, const std::vector<double>& values) {
      graph.setData(values.empty() ? QVector<double>() : hertz, QVector<double>(values.begin(), values.end()), true);
    };
    show(*side.level, levels);
    show(*side.peak, peaks);
  }
  plot_->legend->clearItems();
  for (QCPGraph* Side::*graph : {&Side::level, &Side::peak}) {
    for (Side& side : sides_) {
      if (!(side.*graph)->data()->isEmpty()) (side.*graph)->addToLegend();
    }
  }
  plot_->legend->setVisible(plot_->legend->itemCount() > 0);
  plot_->replot(QCustomPlot::rpQueuedReplot);
  ShowStrongest();
  ShowPointer();
}

void FormSpectrum::ShowState(const SoundLevels& levels) {
  const QString text = levels.lost   ? QStringLiteral("The sound input is lost.  ")
                       : levels.live ? QString()
                                     : QStringLiteral("No sound is being recorded.  ");
  if (state_->text() != text) state_->setText(text);
}

void FormSpectrum::ShowStrongest() {
  QStringList lines;
  for (int place = 0; place < 2; ++place) {
    const Spectrum& spectrum = *sides_[place].spectrum;
    const std::vector<double> levels = spectrum.Levels();
    if (levels.empty()) continue;
    const SpectrumLine line = StrongestLine(levels);
    lines << QStringLiteral("%1: strongest at %2 Hz, %3 dB")
                 .arg(SideName(place), ToQString(FormatNumber(spectrum.HertzOf(line.bin, rate_), "0.0")),
                      ToQString(FormatNumber(line.decibels, "0.0")));
  }
  strongest_->setText(lines.join(QStringLiteral("      ")));
}

// Reads what is drawn, at the bin nearest to the pointer.
void FormSpectrum::ShowPointer() {
  QStringList words;
  if (pointer_ && rate_ > 0 && *pointer_ >= 0 && *pointer_ <= rate_ / 2) {
    words << ToQString(FormatNumber(*pointer_, "0.0")) + QStringLiteral(" Hz");
    for (int place = 0; place < 2; ++place) {
      const auto found =
          sides_[place].level->data()->findBegin(*pointer_ - rate_ / size_->currentData().toInt() / 2, false);
      if (found == sides_[place].level->data()->constEnd()) continue;
      words << SideName(place) + QLatin1Char(' ') + ToQString(FormatNumber(found->value, "0.0")) +
                   QStringLiteral(" dB");
    }
  }
  atPointer_->setText(words.join(QStringLiteral(", ")));
}

}  // namespace tarvolt
