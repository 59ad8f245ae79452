// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>
#include <iostream>
#include <memory>

#include "apps/common/options.h"
#include "apps/common/sound_list.h"
#include "apps/tarvoltd/station.h"
#include "host/disk_path.h"
#include "host/headless_dialogs.h"
#include "host/home_folder.h"
#include "host/make_host.h"
#include "host/terminal_keys.h"
#include "host/unix_signals.h"

int main(int argc, char** argv) {
  using namespace tarvolt;
  const StationOptions options = ParseStationOptions(
      "tarvoltd", "Tarvolt's unattended station: records without a screen until it is told to stop.", argc, argv);
  if (options.finished) return options.exitStatus;

  QCoreApplication application(argc, argv);
  std::unique_ptr<Station> station;
  auto dialogs = std::make_unique<HeadlessDialogs>([&station](const std::string& line) {
    if (station) station->TakeDialogText(line);
  });
  const std::unique_ptr<HostOwner> owner = MakeHost(application, std::move(dialogs));
  if (options.listSound) {
    PrintSoundInputs(owner->host.sound, std::cout);
    return 0;
  }
  UnixSignals stopSignals(owner->loop);
  TerminalKeys keys(owner->loop);

  const std::filesystem::path home = FindHome(options.home.empty() ? std::nullopt : std::optional(options.home));
  HomeLock lock;
  std::string why;
  if (!lock.Take(home, why)) {
    std::cerr << "tarvoltd: " << why << "\n";
    return 1;
  }
  station = std::make_unique<Station>(owner->host, options, NameFromDisk(home.native()).value_or(home.native()));
  stopSignals.OnStopSignal([&station] { station->RequestEnd(); });
  keys.OnEscape([&station] { station->Escape(); });
  const int status = station->Run();
  station.reset();
  return status;
}
