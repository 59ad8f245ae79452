// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/review_window.h"

#include "core/chart/command_states.h"
#include "core/chart/load_data.h"
#include "files/saving.h"
#include "text/number.h"

namespace tarvolt {

FrmReview::FrmReview(Session& session, int number, Person& person)
    : session_(session), commands_(session, window_), loads_(session, window_, commands_, person) {
  window_.Name = std::string(ChartWindow::kReviewName) + NumberText(std::int64_t{number});
  window_.view.Title = OwnTitle(window_);
  commands_.look.UpdateAfterOptionsChange();
}

void FrmReview::cmdSaveView() {
  if (StatesOf(window_).SaveView) SaveView(session_, window_);
}

}  // namespace tarvolt
