// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_pipe.h"

#include <algorithm>
#include <utility>

namespace tarvolt {

SimPipe::SimPipe(SimLoop& loop, const SimWeather& weather, SimRandom& random)
    : loop_(loop), weather_(weather), random_(random) {}

void SimPipe::Send(std::string_view bytes) {
  while (!closed_ && !bytes.empty()) {
    const std::size_t size = weather_.splits ? NextCut(bytes.size()) : bytes.size();
    Put(Mark::Bytes, std::string(bytes.substr(0, size)));
    onTheWay_ += size;
    bytes.remove_prefix(size);
  }
}

void SimPipe::End() {
  if (closed_) return;
  Put(Mark::End, {});
  closed_ = true;
}

void SimPipe::Break(const std::string& why) {
  if (closed_) return;
  pieces_.clear();
  onTheWay_ = 0;
  Put(Mark::Break, why);
  closed_ = true;
}

void SimPipe::Abandon() {
  closed_ = true;
  pieces_.clear();
  onBytes = nullptr;
  onEnd = nullptr;
  onBreak = nullptr;
}

void SimPipe::Put(Mark mark, std::string bytes) {
  lastDue_ = std::max(lastDue_, loop_.Now() + weather_.delay.count());
  pieces_.push_back({lastDue_, mark, std::move(bytes)});
  loop_.At(lastDue_, [pipe = shared_from_this()] { pipe->Arrive(); });
}

// There is an event for each piece; one whose piece was lost finds nothing due.
void SimPipe::Arrive() {
  if (pieces_.empty() || pieces_.front().due > loop_.Now()) return;
  Piece piece = std::move(pieces_.front());
  pieces_.pop_front();
  if (piece.mark == Mark::Bytes) {
    onTheWay_ -= piece.bytes.size();
    if (const auto receive = onBytes) receive(std::move(piece.bytes));
  } else if (piece.mark == Mark::End) {
    if (const auto end = onEnd) end();
  } else if (const auto fail = onBreak) {
    fail(piece.bytes);
  }
}

// Short pieces are as likely as long ones, so that a cut falls inside small messages as well.
std::size_t SimPipe::NextCut(std::size_t size) {
  const std::uint64_t longest = random_.Chance(0.5) ? std::min<std::size_t>(size, 8) : size;
  return static_cast<std::size_t>(1 + random_.Below(longest));
}

}  // namespace tarvolt
