#include "core/chart/review_window.h"

#include "core/chart/load_data.h"
#include "files/saving.h"
#include "text/number.h"

namespace tarvolt {

FrmReview::FrmReview(Session& session, int number, Person& person)
    : session_(session), commands_(session, window_), loads_(session, window_, commands_, person) {
  window_.Name = "rform" + NumberText(std::int64_t{number});
  window_.view.Title = OwnTitle(window_);
  window_.view.cmdStart = false;
  commands_.UpdateAfterOptionsChange();
}

void FrmReview::cmdSaveView() {
  if (window_.chart.Count() > 0 && !window_.save.Loading) SaveView(session_, window_);
}

}  // namespace tarvolt
