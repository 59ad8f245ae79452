// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <memory>

#include "host/alsa_mixer.h"
#include "host/driver_calls.h"
#include "host/linux_processes.h"
#include "host/posix_file_system.h"
#include "host/qt_event_loop.h"
#include "host/qt_sockets.h"
#include "host/sound_inputs.h"
#include "host/system_clock.h"
#include "platform/host.h"

namespace tarvolt {

/// Everything a program needs of the machine it runs on, and the record that hands it down. Outlives whoever was given
/// the record; does not move.
struct HostOwner {
  HostOwner(QCoreApplication& application, std::unique_ptr<Dialogs> chosenDialogs);
  HostOwner(const HostOwner&) = delete;
  HostOwner& operator=(const HostOwner&) = delete;

  SystemClock clock;
  QtEventLoop loop;
  QtSockets sockets{loop};
  PosixFileSystem files;
  LinuxProcesses processes;
  std::unique_ptr<Dialogs> dialogs;
  DriverCalls drivers;
  SoundInputs sound{loop, clock, files, drivers};
  AlsaMixer mixer{drivers};
  Host host{clock, loop, sockets, files, processes, *dialogs, sound, mixer};
};

/// The machine through Qt and Linux, with its limit of open files raised. `dialogs` are a desktop's windows or
/// HeadlessDialogs.
std::unique_ptr<HostOwner> MakeHost(QCoreApplication& application, std::unique_ptr<Dialogs> dialogs);

}  // namespace tarvolt
