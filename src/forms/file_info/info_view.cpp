#include "forms/file_info/info_view.h"

namespace tarvolt {

InfoView::InfoView(const ChartWindow& window, ChartCommands& commands, QWidget* parent)
    : window_(window), commands_(commands), parent_(parent) {}

InfoView::~InfoView() {
  if (form_) disconnect(form_, nullptr, this, nullptr);
}

void InfoView::Open() {
  commands_.mnuDataFileInfo();
  if (form_) {
    form_->Fill(window_);
    form_->raise();
    form_->activateWindow();
  }
  Refresh();
}

void InfoView::Refresh() {
  if (!window_.view.InfoShown) {
    delete form_;
    return;
  }
  if (form_) return;
  form_ = new FormFileInfo(window_, parent_);
  form_->setAttribute(Qt::WA_DeleteOnClose);
  connect(form_, &QObject::destroyed, this, [this] { commands_.UnloadMyInfoFile(); });
  form_->show();
}

}  // namespace tarvolt
