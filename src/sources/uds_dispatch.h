// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "model/chart_window.h"
#include "model/run_control.h"
#include "model/session.h"
#include "sources/sound/sound_input.h"
#include "sources/uds_messages.h"

namespace tarvolt {

/// The values of one set by input, 0 to 9. Several items of an input add up.
using UdsSet = std::array<double, 10>;

/// Acts on the messages of a User Data Source. Any of them may stop the run or run a command, and may so yield and
/// end the link that it came over.
class UdsDispatch {
 public:
  using SetEnded = std::function<void(std::optional<TimeStamp> time)>;

  /// Sends a message of the recorder, given without its end.
  using Reply = std::function<void(std::string_view message)>;

  UdsDispatch(Session& session, ChartWindow& window, RunControl& control, SoundInput& sound, SetEnded onSet,
              Reply reply);

  /// Forgets what the last link left behind.
  void BeginLink();

  /// Acts on one message, given without its end; ignores what it does not know.
  void Act(std::string_view message);

  /// What the data items have added up since it was taken last, by input.
  UdsSet TakeSet() { return std::exchange(set_, UdsSet{}); }

  bool UDSStatusReceived = false;  ///< the reply that ends the status exchange has come
  bool UDSDataDone = false;        ///< the end of a polled set has come
  bool fatalStreamError = false;   ///< an impossible count of channels has come

 private:
  struct Code;
  static const Code* FindCode(int code);

  void EndStatusExchange(std::string_view text);
  void RunCommand(std::string_view text);
  void TakeChannelCount(std::string_view text);
  std::int32_t WithOtherRows(std::int32_t declared) const;
  void EndStampedSet(std::string_view text);
  void EndSet(std::string_view text);
  void SetTimeOrigin(std::string_view text);
  void StartLevelMeter(std::string_view text);
  void StopLevelMeter(std::string_view text);
  void LogUseOfSound(const char* whatWasDone);
  void SendPeaks(std::string_view text);
  void SendSoundAverages(std::string_view text);

  void FinishSet(std::optional<TimeStamp> time);
  void FailStream();
  std::optional<TimeStamp> ReadTime(std::string_view text);

  Session& session_;
  ChartWindow& window_;
  RunControl& control_;
  SoundInput& sound_;
  Reply reply_;
  SetEnded onSet_;
  UdsSet set_{};
  bool badTimeLogged_ = false;
};

}  // namespace tarvolt
