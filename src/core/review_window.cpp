#include "core/review_window.h"

#include "core/load_command.h"
#include "files/load.h"
#include "files/saving.h"
#include "text/number.h"

namespace tarvolt {

FrmReview::FrmReview(Session& session, int number) : session_(session), commands_(session, window_) {
  window_.Name = "rform" + NumberText(std::int64_t{number});
  window_.view.Title = "Review " + NumberText(std::int64_t{number});
  window_.view.cmdStart = false;
  commands_.UpdateAfterOptionsChange();
}

bool FrmReview::LoadDataFile(const std::string& path) {
  return LoadAndShow(session_, window_, commands_, path);
}

void FrmReview::MnuLoadDataFile() {
  if (const auto file = AskForDataFile(session_)) LoadDataFile(*file);
}

void FrmReview::cmdSaveView() {
  if (window_.chart.Count() > 0 && !window_.save.Loading) SaveView(session_, window_);
}

}  // namespace tarvolt
