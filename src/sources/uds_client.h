// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/chart_window.h"
#include "model/run_control.h"
#include "model/session.h"
#include "sources/sound/sound_input.h"
#include "sources/uds_dispatch.h"

namespace tarvolt {

/// The recorder's end of the link to a User Data Source. Its values wait until TakeSet; a pushed set
/// that has ended goes to `onSet` with its time, when it has one, while the chart runs and no log is being turned over.
class UdsClient {
 public:
  using SetEnded = std::function<void(std::optional<TimeStamp> time)>;

  /// `sound` is what the source may use as a level meter.
  UdsClient(Session& session, ChartWindow& window, RunControl& control, SoundInput& sound, SetEnded onSet);
  ~UdsClient();

  /// Finds or starts the source, connects and runs the opening exchange. False, shown and logged, when it did not
  /// come to an end. Yields; Escape ends every wait.
  bool UDSConnect();

  enum class PollResult {
    Answered,  ///< the set has ended
    GivenUp,   ///< Escape was pressed; the answer is still to come and will be that of the next poll
    LinkLost   ///< there is no link, or it was lost or the run stopped during the wait
  };

  /// Asks for one data set and waits for it without a time limit. Yields.
  PollResult Poll();

  /// The values of the set that has ended, by input; empty when it has been taken before.
  UdsSet TakeSet();

  /// Ends the link. No close event follows.
  void Close();

  /// True while the link is open and the opening exchange is done.
  bool IsReady() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace tarvolt
