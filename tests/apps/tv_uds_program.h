// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/program.h"

namespace tarvolt::uds {

/// The real program, started for a test on a free port unless the arguments name one.
class RunningSource : public RunningProgram {
 public:
  explicit RunningSource(std::vector<std::string> arguments);

  /// The port once it listens; 0 when it ended without.
  std::uint16_t Port();
};

/// A recorder's end of the link. Every wait ends after ten seconds.
class Recorder {
 public:
  explicit Recorder(std::uint16_t port, int bufferSize = 0);
  ~Recorder();

  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  void Send(const std::string& bytes) const;

  /// Sends what the system takes within half a second without reading anything; the bytes taken, at most `most`.
  std::size_t Flood(const std::string& bytes, std::size_t most) const;

  /// The next message without its end byte; nothing when the source has closed or is silent.
  std::optional<std::string> Message();

  /// The values of the next set, with its stamp behind them when it has one; empty when there is none.
  std::vector<double> Set();

  /// True when the source has closed and nothing was left to read.
  bool IsClosed();

  /// True when nothing comes for `milliseconds`.
  bool IsSilent(int milliseconds);

 private:
  bool Receive(int milliseconds);

  int socket_ = -1;
  bool closed_ = false;
  std::string buffer_;
  std::size_t at_ = 0;
};

}  // namespace tarvolt::uds
