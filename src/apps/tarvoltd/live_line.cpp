// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tarvoltd/live_line.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {

namespace {

constexpr const char* kEraseLine = "\r\x1b[K";

std::size_t TerminalWidth() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

std::string StateText(const ChartWindow& window) {
  if (!window.run.ChartRunning()) return window.view.Status.Text().empty() ? "idle" : window.view.Status.Text();
  return window.run.chartState() == ChartState::Running ? "recording" : "armed";
}

std::string LastValues(const ChartWindow& window) {
  std::string text;
  const std::int32_t newest = window.LastSampleIndex();
  if (newest < 0) return text;
  for (int channel = 0; channel < std::min(window.run.ChannelCount, kChannels); ++channel) {
    text += (channel == 0 ? "  " : " ") + FormatNumber(window.chart.GetValue(channel, newest), "#########0.0##");
  }
  return text;
}

}  // namespace

LiveLine::LiveLine(bool quiet) : quiet_(quiet), terminal_(!quiet && isatty(STDOUT_FILENO) == 1) {}

void LiveLine::PrintLog(const std::string& line) {
  if (quiet_) return;
  if (terminal_) std::cout << kEraseLine;
  std::cout << Utf8FromAnsi(line) << std::endl;
  if (terminal_) Draw();
}

void LiveLine::Show(const Session& session, const ChartWindow& window) {
  if (!terminal_) return;
  live_ = window.view.RightStatus.empty() ? "" : window.view.RightStatus + "  ";
  live_ += StateText(window);
  if (window.run.ChartRunning()) live_ += "  " + window.view.LeftStatus + LastValues(window);
  if (window.save.keeping.BackupActive) live_ += "  -> " + window.save.keeping.LocalBackupFile.filename().string();
  if (!window.save.keeping.BackupActive && !session.recent.saved[0].empty()) live_ += "  " + session.recent.saved[0];
  Draw();
}

void LiveLine::Clear() {
  if (terminal_) std::cout << kEraseLine << std::flush;
  live_.clear();
}

void LiveLine::Draw() {
  std::cout << kEraseLine << Utf8FromAnsi(live_.substr(0, TerminalWidth() - 1)) << std::flush;
}

}  // namespace tarvolt
