#include "forms/form_main/main_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

#include "forms/chart/file_drop.h"
#include "forms/chart/plot_events.h"
#include "forms/load/load_forms.h"
#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kRefreshMilliseconds = 33;

/// The store keeps sizes in twentieths of a point; a pixel of the usual screen is fifteen of them.
constexpr int kTwipsAPixel = 15;

int PixelsOf(const Session& session, const char* key, int least) {
  return std::max(ValLong(session.store.GetSetting(Section::Settings, key)) / kTwipsAPixel, least);
}

}  // namespace

MainWindow::MainWindow(Session& session, FormMain& form)
    : session_(session),
      form_(form),
      window_(form.Window()),
      items_(this, [this] { Refresh(); }),
      info_(window_, form_.Chart(), this) {
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
  MakeMenus();
  form_.Loads().SetForms(LoadFormsOver(this, session_));
  RestoreGeometry();
  connect(&refresh_, &QTimer::timeout, this, [this] { Refresh(); });
  refresh_.start(kRefreshMilliseconds);
  Refresh();
}

void MainWindow::MakeToolBar() {
  main_ = addToolBar(QStringLiteral("Chart run"));
  main_->setObjectName(QStringLiteral("MainToolBar"));
  main_->setMovable(false);
  main_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  start_ = Add(
      *new QMenu(this), "cmdStart", QStringLiteral("&Start Chart"), {}, [this] { form_.cmdStart(); },
      [this] { return window_.view.cmdStart; });
  main_->addAction(start_);
  main_->widgetForAction(start_)->setObjectName(QStringLiteral("cmdStart"));
  tools_ = new ChartToolBar(window_, form_.Chart(), this);
  addToolBar(tools_);
  tools_->addSeparator();
  const auto addButton = [this](const char* name, const QString& caption, const QString& tip, Command command,
                                Test enabled) {
    QAction* action = Add(*new QMenu(this), name, caption, {}, std::move(command), std::move(enabled));
    action->setToolTip(tip);
    tools_->addAction(action);
    tools_->widgetForAction(action)->setObjectName(QString::fromLatin1(name));
  };
  addButton(
      "cmdOffset", QStringLiteral("Offset"), QStringLiteral("Offsets of the channels"),
      [this] { form_.Offsets().cmdOffset(); }, [this] { return window_.view.OffsetCommand; });
  addButton(
      "cmdInfo", QStringLiteral("Info"), QStringLiteral("What the chart tells of itself"),
      [this] { findChild<QAction*>(QStringLiteral("mnuDataFileInfo"))->trigger(); },
      [this] { return window_.view.InfoCommands; });
  addButton(
      "cmdSaveView", QStringLiteral("Save View"), QStringLiteral("Save the stretch in view"),
      [this] { form_.cmdSaveView(); }, [this] { return window_.view.SaveCommands && HasSamples(); });
  tools_->addWidget(value_);
}

void MainWindow::Refresh() {
  const WindowState& view = window_.view;
  const QString title = view.Title.empty() ? QStringLiteral("Tarvolt") : ToQString(view.Title);
  if (windowTitle() != title) setWindowTitle(title);
  start_->setText(ToQString(view.StartCaption));
  startMenu_->setText(ToQString(view.StartMenuCaption));
  value_->setText(ToQString(view.ValueLabel));
  items_.Refresh();
  info_.Refresh();
  tools_->Refresh();
  offsets_->Refresh();
  status_->Refresh(view);
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
    review = new FormReview(session_, place + 1);
    review->show();
    return;
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedDataFile(*event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const std::string file = DroppedDataFile(*event->mimeData());
  event->acceptProposedAction();
  QMetaObject::invokeMethod(
      this, [this, file] { form_.Loads().DropFile(file); }, Qt::QueuedConnection);
}

// Closing asks the recorder to end; the program's loop then leaves, saves and lets the window go.
void MainWindow::closeEvent(QCloseEvent* event) {
  StoreGeometry();
  event->ignore();
  QMetaObject::invokeMethod(
      this, [this] { form_.RequestEnd(); }, Qt::QueuedConnection);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  ChartCommands& chart = form_.Chart();
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  const bool alt = event->modifiers().testFlag(Qt::AltModifier);
  if (alt && event->key() >= Qt::Key_1 && event->key() <= Qt::Key_8) {
    return form_.Average().StartChannelAvg(event->key() - Qt::Key_0);
  }
  switch (event->key()) {
    case Qt::Key_Escape:
      return form_.Escape();
    case Qt::Key_Left:
      return chart.ScrollLeft();
    case Qt::Key_Right:
      return chart.ScrollRight();
    case Qt::Key_Up:
      return chart.ScrollUp();
    case Qt::Key_Down:
      return chart.ScrollDown();
    case Qt::Key_F3:
      if (shift) return chart.ToggleStatusLine();
      break;
    default:
      break;
  }
  QMainWindow::keyPressEvent(event);
}

void MainWindow::RestoreGeometry() {
  resize(PixelsOf(session_, "Width", 600), PixelsOf(session_, "Height", 400));
  QPoint corner(PixelsOf(session_, "Left", 0), PixelsOf(session_, "Top", 0));
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen != nullptr && !screen->availableGeometry().contains(corner)) corner = QPoint(0, 0);
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
