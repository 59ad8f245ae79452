#include "forms/sound/form_spectrum.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/plot/qcp.h"
#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr double kBottom = -130;
constexpr double kTop = 3;
constexpr int kUsualSize = 2;  // the place of 4096 in the list
constexpr int kMostAveraged = 1000;

QString SideName(int side) {
  return side == 0 ? QStringLiteral("Left") : QStringLiteral("Right");
}

QColor ColorOfSide(int side) {
  return side == 0 ? QColor(0x00, 0x5a, 0xb5) : QColor(0xc2, 0x4a, 0x00);
}

}  // namespace

FormSpectrum::FormSpectrum(SpectrumFeed& feed, QWidget* owner) : QWidget(owner, Qt::Window), feed_(feed) {
  setObjectName(QStringLiteral("FormSpectrum"));
  setWindowTitle(QStringLiteral("Sound Spectrum"));
  auto* layout = new QVBoxLayout(this);
  plot_ = new QCustomPlot(this);
  plot_->setObjectName(QStringLiteral("PltSpectrum"));
  MakePlot();
  MakeControls();
  layout->addWidget(plot_, 1);
  MakeAnew();
  resize(860, 480);
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
  size_->setCurrentIndex(kUsualSize);
  captioned(QStringLiteral("&Samples"), size_, "CboSize");
  weights_ = new QComboBox(this);
  weights_->addItems({QStringLiteral("Hann"), QStringLiteral("Blackman"), QStringLiteral("Rectangular")});
  captioned(QStringLiteral("&Window"), weights_, "CboWindow");
  average_ = new QSpinBox(this);
  average_->setRange(1, kMostAveraged);
  average_->setValue(8);
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
  strongest_ = new QLabel(this);
  strongest_->setObjectName(QStringLiteral("LblStrongest"));
  auto* below = new QHBoxLayout;
  below->addWidget(strongest_);
  auto* column = static_cast<QVBoxLayout*>(layout());
  column->addLayout(row);
  column->addLayout(below);
  connect(size_, &QComboBox::currentIndexChanged, this, [this] { MakeAnew(); });
  connect(weights_, &QComboBox::currentIndexChanged, this, [this] {
    TakeSettings();
    Clear();
  });
  connect(average_, &QSpinBox::valueChanged, this, [this](int transforms) {
    for (Side& side : sides_) side.spectrum->SetAveraging(transforms);
  });
  connect(peakHold_, &QCheckBox::toggled, this, [this] {
    for (Side& side : sides_) side.spectrum->ClearPeaks();
    Draw();
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
  plot_->axisRect()->setRangeDrag(Qt::Horizontal);
  plot_->axisRect()->setRangeZoom(Qt::Horizontal);
  plot_->setNoAntialiasingOnDrag(true);
  for (int side = 0; side < 2; ++side) {
    const auto add = [&](Qt::PenStyle style, const QString& name) {
      QCPGraph* graph = plot_->addGraph();
      graph->setPen(QPen(ColorOfSide(side), 1, style));
      graph->setAntialiased(false);
      graph->setName(name);
      return graph;
    };
    sides_[side].level = add(Qt::SolidLine, SideName(side));
    sides_[side].peak = add(Qt::DotLine, SideName(side) + QStringLiteral(", peak"));
  }
  plot_->legend->setVisible(true);
  plot_->setToolTip(QStringLiteral("Wheel zooms, drag moves, double click shows all"));
  connect(plot_, &QCustomPlot::mouseDoubleClick, this, [this] {
    plot_->xAxis->setRange(0, rate_ / 2);
    plot_->replot(QCustomPlot::rpQueuedReplot);
  });
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
  feed_.SpectrumIndex = 0;
  feed_.SpectrumIndexR = 0;
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
  feed_.SpectrumIndex = 0;
  feed_.SpectrumIndexR = 0;
  feed_.SpectrumActive = true;
  QWidget::showEvent(event);
}

// A window that is only minimised is hidden as well, and needs no samples either.
void FormSpectrum::hideEvent(QHideEvent* event) {
  feed_.SpectrumActive = false;
  Clear();
  QWidget::hideEvent(event);
}

// Called inside the handler of a sound buffer: it only keeps the samples.
void FormSpectrum::Take(int side, const std::vector<double>& left, const std::vector<double>& right) {
  constexpr int kBoth = 2;
  if (side == 0 || side == kBoth) sides_[0].waiting = left;
  if (side == 1 || side == kBoth) sides_[1].waiting = right;
}

void FormSpectrum::Refresh(double samplesPerSecond, bool live) {
  bool fresh = false;
  if (samplesPerSecond != rate_) {
    rate_ = samplesPerSecond;
    plot_->xAxis->setRange(0, rate_ / 2);
    Clear();
  }
  for (Side& side : sides_) {
    if (side.waiting.empty()) continue;
    side.spectrum->Add(side.waiting);
    side.waiting.clear();
    fresh = true;
  }
  if (fresh) Draw();
  ShowStrongest(live);
}

void FormSpectrum::Draw() {
  for (int place = 0; place < 2; ++place) {
    Side& side = sides_[place];
    const std::vector<double> levels = side.spectrum->Levels();
    const std::vector<double> peaks = peakHold_->isChecked() ? side.spectrum->Peaks() : std::vector<double>();
    QVector<double> hertz(static_cast<qsizetype>(levels.size()));
    for (std::size_t bin = 0; bin < levels.size(); ++bin) {
      hertz[static_cast<qsizetype>(bin)] = side.spectrum->HertzOf(bin, rate_);
    }
    const auto show = [&](QCPGraph& graph, const std::vector<double>& values) {
      graph.setData(values.empty() ? QVector<double>() : hertz, QVector<double>(values.begin(), values.end()), true);
      if (values.empty()) {
        graph.removeFromLegend();
      } else {
        graph.addToLegend();
      }
    };
    show(*side.level, levels);
    show(*side.peak, peaks);
  }
  plot_->legend->setVisible(plot_->legend->itemCount() > 0);
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

void FormSpectrum::ShowStrongest(bool live) {
  QString text;
  for (int place = 0; place < 2; ++place) {
    const std::vector<double> levels = sides_[place].spectrum->Levels();
    if (levels.empty()) continue;
    const std::size_t bin = StrongestBin(levels);
    if (!text.isEmpty()) text += QStringLiteral("      ");
    text += QStringLiteral("%1: strongest at %2 Hz, %3 dB")
                .arg(SideName(place), ToQString(FormatNumber(sides_[place].spectrum->HertzOf(bin, rate_), "0.0")),
                     ToQString(FormatNumber(levels[bin], "0.0")));
  }
  if (!live) text = QStringLiteral("No sound is being recorded.");
  if (strongest_->text() != text) strongest_->setText(text);
}

}  // namespace tarvolt
