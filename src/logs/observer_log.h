// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "config/settings.h"
#include "platform/clock.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// The way to a window's observer log, whose text lives in a rich text box. Everything that writes entries by itself
/// goes through here, whether the box is open or not.
class ObserverLog {
 public:
  /// Puts a text into the box at its caret; with `stamped` the stamp line goes in front of it.
  using Entry = std::function<void(const std::string& text, bool stamped)>;

  /// While the box is open it takes the entries; an empty function closes it.
  void OnEntry(Entry entry) { entry_ = std::move(entry); }

  /// What opens the box and brings it to the front.
  void OnOpen(std::function<void()> open) { open_ = std::move(open); }

  bool IsOpen() const { return static_cast<bool>(entry_); }

  /// Opens the box where there is a screen for it.
  void Open() {
    if (open_) open_();
  }

  /// Adds a text. An entry for a log that is not open is dropped silently.
  void AddEntry(const std::string& text, bool stamped = false) {
    if (entry_) entry_(text, stamped);
  }

 private:
  Entry entry_;
  std::function<void()> open_;
};

/// Now in the base of the observer log: UT with OLogUT, else local time.
TimeStamp OLogTime(Clock& clock, const Settings& settings);

/// The stamp line of this moment, with its CR LF: "<12:34:56 01/31/2026 UT>".
std::string GetTimeStamp(Clock& clock, const Settings& settings);

/// The file name of a log begun now, without folder: "YYMMDDHHnnLog.txt".
std::string NameOLogFile(Clock& clock, const Settings& settings);

/// The date format in the spelling of the settings, for one entered in any case; nothing when it is none.
std::optional<std::string> OLogDateFormat(std::string_view entered);

/// The text as it goes into a log that ends in `tail`, its last two characters at most: on a line of its own.
std::string OnNewLine(std::string_view tail, std::string_view text);

/// Whose identity a block gives.
enum class IdentityMode { Local, Client };

/// A station as the identity block describes it.
struct StationIdentity {
  std::string name;
  std::string observer;
  std::string latitude;
  std::string longitude;
  std::string location;
  std::string notes;  ///< with the items of a notes block, which are left out
};

/// The lines of the block, joined by CR LF.
std::string IdentityBlock(IdentityMode mode, const StationIdentity& station);

}  // namespace tarvolt
