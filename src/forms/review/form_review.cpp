#include "forms/review/form_review.h"

#include <QDragEnterEvent>
#include <QMenuBar>

#include "core/chart/command_states.h"
#include "forms/chart/file_drop.h"
#include "forms/chart/picture_commands.h"
#include "forms/chart/plot_events.h"
#include "forms/load/load_forms.h"
#include "forms/load/load_menus.h"
#include "forms/qt_text.h"

namespace tarvolt {

bool ReviewPerson::ChooseLoadOptions(Session& session, LoadOptions& options) {
  return AskLoadOptions(window_, session, options);
}

std::optional<ChannelAnswer> ReviewPerson::ChooseChannels(const ChannelQuestion& question) {
  return AskWhichChannels(window_, question);
}

FormReview::FormReview(Session& session, int number, FormChartView::Apply applyAll)
    : session_(session),
      person_(this),
      review_(session, number, person_),
      items_(this, [this] { Refresh(); }),
      side_(session, review_.Window(), review_.Chart(), std::move(applyAll), this) {
  setObjectName(ToQString(review_.Window().Name));
  setAcceptDrops(true);
  plot_ = new StripChartPlot(review_.Window(), this);
  plot_->SetEvents(PlotEventsFor(review_.Chart()));
  setCentralWidget(plot_);
  tools_ = new ChartToolBar(review_.Window(), review_.Chart(), this);
  addToolBar(tools_);
  status_ = new ChartStatusBar(this);
  setStatusBar(status_);
  MakeFileMenu();
  MakeViewMenu();
  resize(800, 450);
  Refresh();
}

void FormReview::MakeFileMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&File"));
  const ChartWindow& window = review_.Window();
  AddLoadMenus(menu, items_, session_, review_.Loads());
  menu.addSeparator();
  items_.Add(
      menu, "mnuSaveView", QStringLiteral("Save &View..."), {}, [this] { review_.cmdSaveView(); },
      [&window] { return StatesOf(window).SaveView; });
  AddPictureCommands(menu, *plot_);
  items_.Add(
      menu, "mnuDataFileInfo", QStringLiteral("Data File &Information"), {},
      [this] { review_.Chart().look.mnuDataFileInfo(); }, [&window] { return StatesOf(window).InfoCommands; });
  menu.addSeparator();
  items_.Add(menu, "mnuClose", QStringLiteral("Close This Window"), QKeySequence::Close, [this] { close(); });
}

void FormReview::MakeViewMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&View"));
  const ChartWindow& window = review_.Window();
  ChartCommands& chart = review_.Chart();
  const auto hasSamples = [this] { return HasSamples(); };
  items_.Add(
      menu, "mnuFullView", QStringLiteral("&Full View"), QKeySequence(Qt::Key_F9),
      [&chart] { chart.view.cmdFullView(); }, hasSamples);
  items_.Add(
      menu, "mnuChartView", QStringLiteral("View by &Numbers..."), {}, [&chart] { chart.view.mnuChartView(); },
      hasSamples);
  items_.Add(
      menu, "mnuRememberXY", QStringLiteral("&Remember XY"), {}, [&chart] { chart.view.mnuRememberXY(); }, hasSamples);
  items_.Add(
      menu, "mnuRecallXY", QStringLiteral("Re&call XY"), {}, [&chart] { chart.view.mnuRecallXY(); },
      [&window] { return window.view.mnuRecallXY; });
  items_.Add(
      menu, "mnuShowAllChannels", QStringLiteral("Show &All Channels"), {},
      [&chart] { chart.look.mnuShowAllChannels(); },
      [this, &window] { return window.view.mnuChannelVisibility && HasSamples(); });
  items_.Add(
      menu, "mnuShowChartNotations", QStringLiteral("Chart &Notations"), {},
      [&chart] { chart.look.mnuShowChartNotations(); }, [&window] { return window.notations.count > 0; },
      [&window] { return window.chart.NotationsShown; });
}

void FormReview::Refresh() {
  const QString title = ToQString(review_.Window().view.Title);
  if (windowTitle() != title) setWindowTitle(title);
  items_.Refresh();
  tools_->Refresh();
  status_->Refresh(review_.Window().view);
  side_.Refresh();
  plot_->RefreshWhenAsked();
}

void FormReview::closeEvent(QCloseEvent* event) {
  review_.Chart().look.UnloadMyInfoFile();
  QMainWindow::closeEvent(event);
}

void FormReview::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedDataFile(*event->mimeData()).empty()) event->acceptProposedAction();
}

void FormReview::dropEvent(QDropEvent* event) {
  const std::string file = DroppedDataFile(*event->mimeData());
  event->acceptProposedAction();
  QMetaObject::invokeMethod(
      this, [this, file] { review_.Loads().DropFile(file); }, Qt::QueuedConnection);
}

}  // namespace tarvolt
