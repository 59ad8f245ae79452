// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_host.h"

namespace tarvolt {

namespace {

// Each device draws from numbers of its own, so that one more draw by the network leaves the disk's faults where
// they were.
std::uint64_t SeedOf(std::uint64_t seed, std::uint64_t device) {
  return SimRandom(seed ^ (device << 56)).Next();
}

}  // namespace

SimHost::SimHost(std::uint64_t seed, const WallTime& ut)
    : clock(ut), loop(clock), network(loop, SeedOf(seed, 1)), disk(SeedOf(seed, 2)), sound(loop, SeedOf(seed, 3)) {}

Host SimHost::Record() {
  return {clock, loop, network, disk, processes, dialogs, sound, mixer};
}

void SimHost::Kill() {
  disk.Kill();
  loop.ForgetProcess();
}

void SimHost::Reboot() {
  loop.ForgetProcess();  // what the destructors of the dead program have posted
  disk.Reboot();
}

}  // namespace tarvolt
