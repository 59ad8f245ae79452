// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/mixer.h"
#include "platform/processes.h"
#include "platform/sockets.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// The outside world, one of each. Chosen in a program's main function and handed down by reference; whoever
/// holds the references outlives everything that was given this record.
struct Host {
  Clock& clock;
  EventLoop& loop;
  Sockets& sockets;
  FileSystem& files;
  Processes& processes;
  Dialogs& dialogs;
  WaveInDevices& sound;
  Mixer& mixer;
};

}  // namespace tarvolt
