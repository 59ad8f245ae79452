// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTcpSocket>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

#include "apps/tv-uds/link/message_reader.h"
#include "apps/tv-uds/link/pacer.h"
#include "apps/tv-uds/options.h"
#include "apps/tv-uds/signals/source.h"

namespace tarvolt::uds {

/// One connection of a recorder: answers its messages and sends it the sets of a source, from the first on.
///
/// A data set goes out in one write. While the recorder does not read, no sets are made, so that nothing piles up here:
/// they are late, and those that would be too late are left out, or put off when the source keeps every set.
/// Behind the last set the connection is closed when one more would be due.
class Session {
 public:
  /// Takes the connected socket. `onEnded` is called once, from an event of the socket, when the connection is gone.
  Session(std::unique_ptr<QTcpSocket> socket, const Source& source, const Options& options,
          std::function<void()> onEnded);
  ~Session();

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

 private:
  void ReadMessages();
  void Act(const std::string& message);
  void SetPushing(bool pushing);
  void SendStatus();
  void AnswerRequest();

  void StartPushing();
  void PushDueSets();
  void GiveUpLateSets(double now);
  void TellLate(const std::string& text);
  void ArmTimer();

  bool SendNextSet(double monotonicTime);
  std::optional<double> StampOfNextSet(double monotonicTime) const;
  void StartSets(double monotonicTime);
  void Send(const std::string& text);
  bool IsConnected() const;
  bool IsBackedUp() const;

  std::unique_ptr<QTcpSocket> socket_;
  const Source& source_;
  const Options& options_;
  MessageReader reader_;
  Pacer pacer_;
  QTimer timer_;
  bool pushing_ = false;                // the mode in force
  bool pushStarted_ = false;            // the opening exchange is over and sets are on their way
  std::optional<double> firstSetTime_;  // of the wall clock, seconds since 1970
  std::int64_t leftOut_ = 0;
  std::optional<double> toldLate_;  // monotonic time of the last words about late sets
};

}  // namespace tarvolt::uds
