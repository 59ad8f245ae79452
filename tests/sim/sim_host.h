// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/host.h"
#include "sim/sim_clock.h"
#include "sim/sim_dialogs.h"
#include "sim/sim_disk.h"
#include "sim/sim_loop.h"
#include "sim/sim_mixer.h"
#include "sim/sim_network.h"
#include "sim/sim_processes.h"
#include "sim/sim_sound.h"

namespace tarvolt {

/// A simulated machine with one of everything that the recorder needs from outside. Two machines made from one seed
/// and treated alike behave alike to the last event.
///
/// To crash a program and start it again:
///
///     host.disk.CrashAtOperation(17, seed);
///     if (host.RunsUntilCrash([&] { host.loop.RunFor(1h); })) {
///       station.reset();   // its destructors meet a dead disk and change nothing
///       host.Reboot();
///       station.emplace(host.Record());
///     }
class SimHost {
 public:
  /// Switched on at `ut`; 2 January 2010, 12:00 UT, when that is left out.
  explicit SimHost(std::uint64_t seed, const WallTime& ut = {2010, 1, 2, 12, 0, 0, 0});

  SimHost(const SimHost&) = delete;
  SimHost& operator=(const SimHost&) = delete;

  /// What the program is handed. Refers to this object.
  Host Record();

  /// Runs a part of the program's life. True when it died in it (SimCrash); the program is then dead as after Kill.
  template <typename Life>
  bool RunsUntilCrash(Life life) {
    try {
      life();
      return false;
    } catch (const SimCrash&) {
      Kill();
      return true;
    }
  }

  /// The program dies at once, between two events: what it has posted and its timers are gone, its disk fails. Its
  /// objects are to be destroyed next.
  void Kill();

  /// The machine is ready for the next start of the program. Time, the world's events and the files go on.
  void Reboot();

  SimClock clock;
  SimLoop loop;
  SimNetwork network;
  SimDisk disk;
  SimProcesses processes;
  SimDialogs dialogs;
  SimSound sound;
  SimMixer mixer;
};

}  // namespace tarvolt
