// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// A data source whose every word a test decides: it listens on a free port and serves one recorder at a time.
class TestSource {
 public:
  TestSource();
  ~TestSource();

  TestSource(const TestSource&) = delete;
  TestSource& operator=(const TestSource&) = delete;

  std::uint16_t Port() const { return port_; }

  /// Waits up to ten seconds for the next recorder and for its question about the channels. What came before it is
  /// thrown away.
  bool Accept();

  /// Answers that question, then waits until a recorder that was answered has surely begun its run.
  void BeginRun(int channels);

  /// Everything goes out in one piece.
  void Send(const std::string& bytes) const;

  /// Pushes one set.
  void SendSet(const std::vector<double>& values, std::optional<TimeStamp> stamp) const;

  void HangUp();

 private:
  int listener_ = -1;
  int socket_ = -1;
  std::uint16_t port_ = 0;
};

/// A port on which nobody listens.
std::uint16_t FreePort();

}  // namespace tarvolt
