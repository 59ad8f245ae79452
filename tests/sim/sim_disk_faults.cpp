// SPDX-License-Identifier: GPL-3.0-or-later
// The faults of the disk: operations that fail, the death of the program, and the loss of power.

#include <exception>

#include "sim/sim_disk_node.h"

namespace tarvolt {

void SimDisk::SetReadOnly(const std::filesystem::path& folder, bool readOnly) {
  if (readOnly) {
    readOnly_.insert(KeyOf(folder));
  } else {
    readOnly_.erase(KeyOf(folder));
  }
}

void SimDisk::SetUnreadable(const std::filesystem::path& file, bool unreadable) {
  if (unreadable) {
    unreadable_.insert(KeyOf(file));
  } else {
    unreadable_.erase(KeyOf(file));
  }
}

void SimDisk::FailOperation(std::uint64_t n, Repeat repeat, std::errc reason) {
  failAt_ = operations_ + n;
  failRepeat_ = repeat;
  failure_ = std::make_error_code(reason);
}

void SimDisk::CrashAtOperation(std::uint64_t n, std::uint64_t seed) {
  crashAt_ = operations_ + n;
  random_ = SimRandom(seed);
}

void SimDisk::Kill() {
  down_ = true;
  quiet_ = true;
}

void SimDisk::SetPowerLoss(bool on) {
  powerLoss_ = on;
  for (auto& [key, node] : names_.files) node->synced = node->bytes;
}

void SimDisk::Reboot() {
  if (down_ && powerLoss_) LosePower();
  unsyncedNames_.clear();
  for (auto& [key, node] : names_.files) {
    node->synced = node->bytes;
    node->unsynced.clear();
  }
  crashAt_ = 0;
  down_ = false;
  quiet_ = false;
  ++boots_;
}

// A dead program's destructors run while SimCrash unwinds the stack: an exception out of one of them would end the
// test program, so that they meet a disk that fails instead.
bool SimDisk::Alive(std::error_code& error) {
  error.clear();
  if (!down_) return true;
  if (!quiet_ && std::uncaught_exceptions() == 0) throw SimCrash{operations_};
  error = std::make_error_code(std::errc::io_error);
  return false;
}

SimDisk::Fate SimDisk::NextFate() {
  ++operations_;
  if (operations_ == crashAt_) return Fate::Dies;
  if (failAt_ == 0 || operations_ < failAt_) return Fate::Happens;
  if (operations_ > failAt_ && failRepeat_ == Repeat::Once) return Fate::Happens;
  return Fate::Fails;
}

void SimDisk::Die() {
  down_ = true;
  throw SimCrash{operations_};
}

void SimDisk::LosePower() {
  const std::size_t kept = random_.Below(unsyncedNames_.size() + 1);
  if (kept < unsyncedNames_.size()) names_ = unsyncedNames_[kept];
  for (auto& [key, node] : names_.files) LoseWrites(*node);
}

void SimDisk::LoseWrites(Node& node) {
  if (node.unsynced.empty()) return;
  const std::size_t kept = random_.Below(node.unsynced.size() + 1);
  node.bytes = node.synced;
  for (std::size_t i = 0; i < kept; ++i) node.unsynced[i].ApplyTo(node.bytes);
  if (kept == node.unsynced.size() || node.unsynced[kept].bytes.empty()) return;
  Node::Change torn = node.unsynced[kept];
  torn.bytes.resize(random_.Below(torn.bytes.size() + 1));
  if (!torn.bytes.empty()) torn.ApplyTo(node.bytes);
}

}  // namespace tarvolt
