// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// The program's own running account. One line an entry, stamped with the log time of the run.
class SessionLog {
 public:
  /// Receives each line as it is written, without its line end, the date lines among them. What a listener itself logs
  /// is not offered again.
  using Listener = std::function<void(const std::string& line)>;

  SessionLog(Clock& clock, FileSystem& files, const Settings& settings);

  /// Days added to the local clock for the stamps, the offset of the run in hand.
  void SetUTOffset(double days);

  /// The file that AutoSaveSessionLog appends to; empty for none.
  void SetFileName(std::filesystem::path file);
  bool HasFileName() const { return !file_.empty(); }

  void AddListener(Listener listener);

  /// Writes one entry; the first of a day is preceded by the date line. A failing append stops nothing; the first of
  /// several is reported by a line of its own in the log in memory.
  void Add2SLog(std::string_view text);

  /// The last part of the log, with CR LF line ends; never longer than kTextLimit.
  const std::string& Text() const { return text_; }

  /// What the log in memory is held to: months of entries must not fill it. The file is complete.
  static constexpr std::size_t kTextLimit = 4u << 20;

 private:
  bool IsFirstOfDay(TimeStamp now);
  void AppendToFile(const std::string& text);
  void Emit(const std::string& line);
  void DropOldestLines();

  Clock& clock_;
  FileSystem& files_;
  const Settings& settings_;
  double utOffset_ = 0;
  int dayOfLastEntry_ = 0;
  bool fileHasDate_ = false;  ///< a date line stands in it, so that its times can be told
  bool fileFailing_ = false;
  bool telling_ = false;
  std::filesystem::path file_;
  std::vector<Listener> listeners_;
  std::string text_;
};

}  // namespace tarvolt
