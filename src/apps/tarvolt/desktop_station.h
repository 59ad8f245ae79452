// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "apps/common/obey.h"
#include "apps/common/options.h"
#include "core/form_main.h"
#include "forms/dialogs/desktop_dialogs.h"
#include "forms/form_main/desktop_person.h"
#include "forms/form_main/main_window.h"
#include "platform/host.h"

namespace tarvolt {

/// A command line that starts a chart, or keeps messages off, must not wait for a person.
bool IsUnattended(const StationOptions& options);

/// The recorder with its main window, driven by the person, the command line and signals.
class DesktopStation {
 public:
  DesktopStation(const Host& host, DesktopDialogs& dialogs, const StationOptions& options,
                 const std::filesystem::path& home);

  /// Loads, shows the window and works until it is closed; then saves and ends. Returns the exit status.
  int Run();

  /// A signal asks the program to end.
  void RequestEnd() { form_.RequestEnd(); }

 private:
  void StartAsAsked();

  const StationOptions& options_;
  DesktopDialogs& dialogs_;
  Session session_;
  DesktopPerson person_;
  FormMain form_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<Timer> endTimer_;
};

}  // namespace tarvolt
