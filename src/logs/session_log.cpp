// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/session_log.h"

#include <system_error>
#include <utility>

#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr const char* kLineEnd = "\r\n";

// Words from outside must neither forge a line of the log nor command the terminal that shows it.
std::string WithoutControls(std::string_view text) {
  std::string clean(text);
  for (char& c : clean) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
  }
  return clean;
}

// It says UT whatever base the log runs in (meant).
std::string DateLine(TimeStamp now) {
  return FormatDate(now, "yymmdd' (YYMMDD) UT'");
}

}  // namespace

SessionLog::SessionLog(Clock& clock, FileSystem& files, const Settings& settings)
    : clock_(clock), files_(files), settings_(settings) {}

void SessionLog::SetUTOffset(double days) {
  utOffset_ = days;
}

void SessionLog::SetFileName(std::filesystem::path file) {
  file_ = std::move(file);
  fileHasDate_ = false;
}

void SessionLog::AddListener(Listener listener) {
  listeners_.push_back(std::move(listener));
}

void SessionLog::Add2SLog(std::string_view text) {
  const TimeStamp now = NowPrecise(clock_) + utOffset_;
  const std::string dateLine = IsFirstOfDay(now) ? DateLine(now) : std::string();
  const std::string line = FormatDate(now, "hh:nn:ss ") + WithoutControls(text);

  AppendToFile(dateLine.empty() && fileHasDate_ ? line + kLineEnd : DateLine(now) + kLineEnd + line + kLineEnd);
  if (!dateLine.empty()) Emit(dateLine);
  Emit(line);
}

bool SessionLog::IsFirstOfDay(TimeStamp now) {
  const int day = FieldsOf(now).day;
  return std::exchange(dayOfLastEntry_, day) != day;
}

void SessionLog::AppendToFile(const std::string& text) {
  if (!settings_.files.AutoSaveSessionLog || file_.empty()) return;
  fileHasDate_ = true;
  std::error_code error;
  const std::unique_ptr<File> file = files_.Open(file_, OpenMode::Append, error);
  if (file != nullptr) file->Write(text, error);
  const bool failed = file == nullptr || static_cast<bool>(error);
  if (failed && !fileFailing_) Emit("Could not write the session log file " + file_.string() + ": " + error.message());
  fileFailing_ = failed;
}

void SessionLog::Emit(const std::string& line) {
  text_ += line;
  text_ += kLineEnd;
  if (text_.size() > kTextLimit) DropOldestLines();

  if (telling_) return;
  telling_ = true;
  const std::vector<Listener> listeners = listeners_;
  for (const Listener& listener : listeners) listener(line);
  telling_ = false;
}

void SessionLog::DropOldestLines() {
  // An eighth more than needed, so that a full log is not moved in memory with each entry.
  const std::size_t least = text_.size() - kTextLimit / 8 * 7;
  const std::size_t lineEnd = text_.find(kLineEnd, least);
  const bool linesRemain = lineEnd + 2 < text_.size();
  text_.erase(0, linesRemain ? lineEnd + 2 : least);
}

}  // namespace tarvolt
