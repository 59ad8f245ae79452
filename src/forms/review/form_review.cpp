#include "forms/review/form_review.h"

#include <QDragEnterEvent>
#include <QMenuBar>

#include "forms/chart/file_drop.h"
#include "forms/chart/picture_commands.h"
#include "forms/chart/plot_events.h"
#include "forms/qt_text.h"

namespace tarvolt {

FormReview::FormReview(Session& session, int number, FormChartView::Apply applyAll)
    : review_(session, number), side_(session, review_.Window(), review_.Chart(), std::move(applyAll), this) {
  setObjectName(ToQString(review_.Window().Name));
  setAcceptDrops(true);
  plot_ = new StripChartPlot(review_.Window(), this);
  plot_->SetEvents(PlotEventsFor(review_.Chart()));
  setCentralWidget(plot_);
  tools_ = new ChartToolBar(review_.Window(), review_.Chart(), this);
  addToolBar(tools_);
  status_ = new ChartStatusBar(this);
  setStatusBar(status_);
  MakeMenus();
  resize(800, 450);
  Refresh();
}

void FormReview::MakeMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addAction(QStringLiteral("&Load Data File..."), QKeySequence::Open, this, [this] { review_.MnuLoadDataFile(); })
      ->setObjectName(QStringLiteral("MnuLoadDataFile"));
  file->addAction(QStringLiteral("Save &View..."), this, [this] { review_.cmdSaveView(); })
      ->setObjectName(QStringLiteral("mnuSaveView"));
  AddPictureCommands(*file, *plot_);
  file->addAction(QStringLiteral("Data File &Information"), this, [this] { review_.Chart().mnuDataFileInfo(); })
      ->setObjectName(QStringLiteral("mnuDataFileInfo"));
  file->addSeparator();
  file->addAction(QStringLiteral("Close This Window"), QKeySequence::Close, this, [this] { close(); });
  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  view->addAction(QStringLiteral("&Full View"), QKeySequence(Qt::Key_F9), this,
                  [this] { review_.Chart().cmdFullView(); });
  view->addAction(QStringLiteral("View by &Numbers..."), this, [this] { review_.Chart().mnuChartView(); });
  view->addAction(QStringLiteral("&Remember XY"), this, [this] { review_.Chart().mnuRememberXY(); });
  view->addAction(QStringLiteral("Re&call XY"), this, [this] { review_.Chart().mnuRecallXY(); });
  view->addAction(QStringLiteral("Show &All Channels"), this, [this] { review_.Chart().mnuShowAllChannels(); });
}

void FormReview::Refresh() {
  const QString title = ToQString(review_.Window().view.Title);
  if (windowTitle() != title) setWindowTitle(title);
  tools_->Refresh();
  status_->Refresh(review_.Window().view);
  side_.Refresh();
  plot_->RefreshWhenAsked();
}

void FormReview::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedDataFile(*event->mimeData()).empty()) event->acceptProposedAction();
}

void FormReview::dropEvent(QDropEvent* event) {
  review_.LoadDataFile(DroppedDataFile(*event->mimeData()));
}

}  // namespace tarvolt
