// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/review/form_review.h"

#include <QDragEnterEvent>
#include <QMenuBar>

#include "core/chart/command_states.h"
#include "forms/chart/chart_menus.h"
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
  AddViewMenu(*menuBar()->addMenu(QStringLiteral("&View")), items_, review_.Window(), review_.Chart());
  AddVisibilityMenu(*menuBar()->addMenu(QStringLiteral("&Channels")), items_, review_.Window(), review_.Chart());
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

void FormReview::keyPressEvent(QKeyEvent* event) {
  if (!ObeyChartKey(*event, review_.Chart())) return QMainWindow::keyPressEvent(event);
  Refresh();
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
