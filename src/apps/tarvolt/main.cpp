// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QMessageBox>
#include <iostream>
#include <memory>

#include "apps/common/options.h"
#include "apps/common/sound_list.h"
#include "apps/tarvolt/desktop_station.h"
#include "forms/dialogs/desktop_dialogs.h"
#include "host/disk_path.h"
#include "host/home_folder.h"
#include "host/make_host.h"
#include "host/unix_signals.h"

namespace {

// From a desktop icon nobody sees standard error.
void TellWhyNot(const std::string& why, bool attended) {
  std::cerr << "tarvolt: " << why << "\n";
  if (!attended) return;
  QMessageBox::warning(nullptr, QStringLiteral("Tarvolt"), QString::fromLocal8Bit(why.c_str()));
}

}  // namespace

int main(int argc, char** argv) {
  using namespace tarvolt;
  const StationOptions options =
      ParseStationOptions("tarvolt", "Tarvolt, a strip-chart recorder and data logger with a window.", argc, argv);
  if (options.finished) return options.exitStatus;
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
      qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    std::cerr << "tarvolt: there is no display; tarvoltd records without one\n";
    return 1;
  }

  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  auto chosen = std::make_unique<DesktopDialogs>();
  DesktopDialogs& dialogs = *chosen;
  const std::unique_ptr<HostOwner> owner = MakeHost(application, std::move(chosen));
  if (options.listSound) {
    PrintSoundInputs(owner->host.sound, std::cout);
    return 0;
  }
  UnixSignals stopSignals(owner->loop);

  const std::filesystem::path home = FindHome(options.home.empty() ? std::nullopt : std::optional(options.home));
  HomeLock lock;
  std::string why;
  if (!lock.Take(home, why)) {
    stopSignals.OnStopSignal([&dialogs] { dialogs.EndWaiting(); });
    TellWhyNot(why, !IsUnattended(options));
    return 1;
  }
  DesktopStation station(owner->host, dialogs, options, NameFromDisk(home.native()).value_or(home.native()));
  stopSignals.OnStopSignal([&station, &dialogs] {
    dialogs.EndWaiting();
    station.RequestEnd();
  });
  return station.Run();
}
