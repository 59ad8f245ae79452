// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarvolt::uds {

/// Who decides when a data set is sent.
enum class Mode {
  Auto,  ///< the recorder, with its word POLL or PUSH
  Push,  ///< sets are pushed whatever was asked
  Poll   ///< sets are sent on request alone
};

/// What was asked for on the command line.
struct Options {
  std::string address = "127.0.0.1";
  std::uint16_t port = 1735;  ///< 0 lets the system choose
  int channels = 4;           ///< 1 to 8
  double rate = 10;           ///< sets a second
  Mode mode = Mode::Auto;
  std::string signal = "receiver";
  std::string replay;  ///< a file to send instead of a signal; empty for none
  std::string wav;     ///< a wave file to write in place of serving; empty for none
  double wavSeconds = 20;
  std::uint64_t seed = 1;
  bool timeStamps = false;
  bool once = false;  ///< end with the first connection
};

/// Reads the command line. On an answer of 0 (help or version, written to standard output) or 2 (wrong usage, reported
/// on standard error) the program is to end with it; nothing means go on.
std::optional<int> ParseOptions(int argc, char** argv, Options& options);

}  // namespace tarvolt::uds
