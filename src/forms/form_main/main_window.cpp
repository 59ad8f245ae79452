// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_main/main_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "core/chart/command_states.h"
#include "forms/chart/chart_menus.h"
#include "forms/chart/file_drop.h"
#include "forms/chart/plot_events.h"
#include "forms/plot/chart_colors.h"
#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kRefreshMilliseconds = 33;

/// The store keeps sizes in twentieths of a point; a pixel of the usual screen is fifteen of them.
constexpr int kTwipsAPixel = 15;

/// In which all buttons and the status line find room.
constexpr int kLeastWidth = 960;
constexpr int kLeastHeight = 540;

int PixelsOf(const Session& session, const char* key, int least) {
  return std::max(ValLong(session.store.GetSetting(Section::Settings, key)) / kTwipsAPixel, least);
}

}  // namespace

MainWindow::MainWindow(Session& session, FormMain& form, DesktopPerson& person)
    : session_(session),
      form_(form),
      person_(person),
      window_(form.Window()),
      sound_(session, form.Sound(), this),
      items_(this, [this] { Refresh(); }),
      side_(
          session, window_, form.Chart(), [this](const ChartViewEntry& entry) { return ApplyViewToAll(entry); }, this) {
  setObjectName(QStringLiteral("form1"));
  setAcceptDrops(true);
  plot_ = new StripChartPlot(window_, this);
  plot_->SetEvents(PlotEventsFor(form_.Chart()));
  value_ = new QLabel(this);
  value_->setObjectName(QStringLiteral("LBLCHVAL"));
  value_->setTextFormat(Qt::PlainText);
  offsets_ = new OffsetFrame(window_, form_.Offsets(), this);
  auto* middle = new QWidget(this);
  auto* layout = new QVBoxLayout(middle);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(offsets_);
  layout->addWidget(plot_, 1);
  setCentralWidget(middle);
  MakeToolBar();
  status_ = new ChartStatusBar(this);
  setStatusBar(status_);
  log_ = new FormSessionLog(session_);
  log_->setParent(this, Qt::Window);
  monitor_ = new FormTriggerMonitor(this);
  MakeMenus();
  RestoreGeometry();
  connect(&refresh_, &QTimer::timeout, this, [this] { Refresh(); });
  refresh_.start(kRefreshMilliseconds);
  Refresh();
  person_.SitAt(this);
  if (session_.settings.observerLog.LoadLogOnStartUp) form_.OLog().Open();
}

MainWindow::~MainWindow() {
  StoreGeometry();
  for (const QPointer<FormReview>& review : reviews_) delete review;
  person_.SitAt(nullptr);
  if (!olog_) return;
  if (form_.OLog().IsOpen()) olog_->SaveUnasked();
  delete olog_;
}

void MainWindow::MakeToolBar() {
  main_ = addToolBar(QStringLiteral("Chart run"));
  main_->setObjectName(QStringLiteral("MainToolBar"));
  main_->setMovable(false);
  main_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  start_ = new QPushButton(main_);
  start_->setObjectName(QStringLiteral("cmdStart"));
  start_->setFlat(true);
  start_->setFocusPolicy(Qt::NoFocus);
  connect(start_, &QPushButton::clicked, this, [this] { items_.RunLater([this] { form_.cmdStart(); }); });
  main_->addWidget(start_);
  tools_ = new ChartToolBar(window_, form_.Chart(), this);
  addToolBar(tools_);
  tools_->addSeparator();
  AddButton(
      "cmdOffset", QStringLiteral("Offset"), QStringLiteral("Offsets of the channels"),
      [this] { form_.Offsets().cmdOffset(); }, [this] { return StatesOf(window_).OffsetCommand; });
  AddButton(
      "cmdInfo", QStringLiteral("Info"), QStringLiteral("What the chart tells of itself"),
      [this] { form_.Chart().look.mnuDataFileInfo(); }, [this] { return StatesOf(window_).InfoCommands; });
  AddButton(
      "cmdSaveView", QStringLiteral("Save View"), QStringLiteral("Save the stretch in view"),
      [this] { form_.cmdSaveView(); }, [this] { return StatesOf(window_).SaveView; });
  tools_->addWidget(value_);
}

void MainWindow::AddButton(const char* name, const QString& caption, const QString& tip, Command command,
                           Test enabled) {
  QAction* action = items_.Make(name, caption, std::move(command), std::move(enabled));
  action->setToolTip(tip);
  tools_->addAction(action);
  tools_->widgetForAction(action)->setObjectName(QString::fromLatin1(name));
}

void MainWindow::Refresh() {
  const WindowState& view = window_.view;
  const QString title = view.Title.empty() ? QStringLiteral("Tarvolt") : ToQString(view.Title);
  if (windowTitle() != title) setWindowTitle(title);
  const CommandStates states = StatesOf(window_);
  start_->setText(ToQString(states.StartCaption));
  start_->setEnabled(states.cmdStart);
  startMenu_->setText(ToQString(states.StartMenuCaption));
  value_->setText(ToQString(view.ValueLabel));
  ShowInColor(*value_, window_.look.colors.ChannelColor);
  items_.Refresh();
  tools_->Refresh();
  offsets_->Refresh();
  status_->Refresh(view);
  side_.Refresh();
  if (monitor_->isVisible()) monitor_->Refresh(form_.Triggers().oTriggers());
  sound_.Refresh();
  plot_->RefreshWhenAsked();
  for (const QPointer<FormReview>& review : reviews_) {
    if (review && review->isVisible()) review->Refresh();
  }
}

void MainWindow::NewReview() {
  reviews_.resize(FrmReview::kMost);
  for (int place = 0; place < FrmReview::kMost; ++place) {
    QPointer<FormReview>& review = reviews_[place];
    // One that was closed in the middle of a load still has its load on the way.
    if (review && (review->isVisible() || review->Review().Window().save.Loading)) continue;
    delete review;
    review = new FormReview(session_, place + 1, [this](const ChartViewEntry& entry) { return ApplyViewToAll(entry); });
    review->show();
    return;
  }
}

// In words what is wrong with the entry for the first window that cannot show it; windows without enough data are
// passed over when another one shows it.
std::string MainWindow::ApplyViewToAll(const ChartViewEntry& entry) {
  std::string problem;
  bool shown = false;
  const auto applyTo = [&](const ChartWindow& window, ViewCommands& commands) {
    const std::string words = ApplyChartView(entry, window, commands);
    shown = shown || words.empty();
    if (problem.empty()) problem = words;
  };
  applyTo(window_, form_.Chart().view);
  for (const QPointer<FormReview>& review : reviews_) {
    if (review && review->isVisible()) applyTo(review->Review().Window(), review->Review().Chart().view);
  }
  return shown ? std::string() : problem;
}

void MainWindow::TakeLookEverywhere() {
  form_.Chart().look.TakeLook();
  for (const QPointer<FormReview>& review : reviews_) {
    if (review) review->Review().Chart().look.TakeLook();
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedDataFile(*event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const std::string file = DroppedDataFile(*event->mimeData());
  event->acceptProposedAction();
  items_.RunLater([this, file] { form_.Loads().DropFile(file); });
}

// Closing asks the recorder to end; the program's loop then leaves, saves and lets the window go.
void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  items_.RunLater([this] { form_.mnuExit(); });
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  ChartCommands& chart = form_.Chart();
  const int key = event->key();
  // A digit of the keypad is the same key as one of the row.
  if (event->modifiers().testFlag(Qt::AltModifier) && key >= Qt::Key_1 && key <= Qt::Key_8) {
    form_.Average().StartChannelAvg(key - Qt::Key_0);
  } else if (key == Qt::Key_Escape) {
    form_.Escape();
  } else if (event->modifiers().testFlag(Qt::ShiftModifier) && key == Qt::Key_F4) {
    chart.look.ShowAddress();
  } else if (event->modifiers().testFlag(Qt::ShiftModifier) && key == Qt::Key_F5) {
    chart.look.ShowLastMessage();
  } else if (!ObeyChartKey(*event, chart)) {
    return QMainWindow::keyPressEvent(event);
  }
  Refresh();
}

void MainWindow::RestoreGeometry() {
  resize(PixelsOf(session_, "Width", kLeastWidth), PixelsOf(session_, "Height", kLeastHeight));
  QPoint corner(PixelsOf(session_, "Left", 0), PixelsOf(session_, "Top", 0));
  if (QGuiApplication::screenAt(corner) == nullptr) corner = QPoint(0, 0);
  move(corner);
}

// A window without a usual size would come back as one.
void MainWindow::StoreGeometry() {
  constexpr int kLeastTwips = 3000;
  if (isMinimized() || isMaximized() || width() * kTwipsAPixel < kLeastTwips) return;
  session_.store.BeginBatch();
  const auto store = [this](const char* key, int pixels) {
    session_.store.SaveSetting(Section::Settings, key, NumberText(std::int64_t{pixels} * kTwipsAPixel));
  };
  store("Width", width());
  store("Height", height());
  store("Left", std::max(x(), 0));
  store("Top", std::max(y(), 0));
  session_.store.EndBatch();
}

}  // namespace tarvolt
