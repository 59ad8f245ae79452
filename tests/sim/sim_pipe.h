// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "sim/sim_loop.h"
#include "sim/sim_random.h"

namespace tarvolt {

/// What a network does to the bytes on it. The default is a perfect one: a millisecond away, every Send one arrival.
struct SimWeather {
  std::chrono::milliseconds delay{1};
  bool splits = false;  ///< each Send is cut at random points into arrivals of their own
};

/// One direction of a simulated connection: bytes go in, and arrive later and in order as events of the loop. Held by
/// both ends; the receiving one clears the callbacks when it goes.
class SimPipe : public std::enable_shared_from_this<SimPipe> {
 public:
  SimPipe(SimLoop& loop, const SimWeather& weather, SimRandom& random);

  void Send(std::string_view bytes);

  /// Ends the direction in order: onEnd comes behind what was sent.
  void End();

  /// Ends it at once: what is on the way is lost, onBreak comes next.
  void Break(const std::string& why);

  /// The receiving end has gone: nothing arrives any more.
  void Abandon();

  /// Kept by the receiving end: bytes that have arrived but are held back from a reader who does not read.
  std::size_t waiting = 0;

  /// Bytes that the receiving end has not taken: those on their way and those held back.
  std::size_t Unread() const { return onTheWay_ + waiting; }

  std::function<void(std::string)> onBytes;
  std::function<void()> onEnd;
  std::function<void(const std::string&)> onBreak;

 private:
  enum class Mark { Bytes, End, Break };
  struct Piece {
    std::int64_t due = 0;
    Mark mark = Mark::Bytes;
    std::string bytes;  // or the reason of a break
  };

  void Put(Mark mark, std::string bytes);
  void Arrive();
  std::size_t NextCut(std::size_t size);

  SimLoop& loop_;
  const SimWeather& weather_;
  SimRandom& random_;
  std::deque<Piece> pieces_;
  std::size_t onTheWay_ = 0;
  std::int64_t lastDue_ = 0;
  bool closed_ = false;  // nothing more goes in
};

}  // namespace tarvolt
