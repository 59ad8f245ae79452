// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "apps/common/obey.h"
#include "apps/common/options.h"
#include "apps/tarvoltd/live_line.h"
#include "core/form_main.h"
#include "platform/host.h"

namespace tarvolt {

/// The unattended station: the recorder on the real host, driven by the command line and by signals.
class Station {
 public:
  Station(const Host& host, const StationOptions& options, const std::filesystem::path& home);

  /// Loads, records as asked, and ends cleanly. Returns the exit status.
  int Run();

  /// A signal asks the program to end.
  void RequestEnd() { form_.RequestEnd(); }

  /// The Escape key.
  void Escape() { form_.Escape(); }

  /// A text that a person would have seen in a box: it goes to the log.
  void TakeDialogText(const std::string& line);

 private:
  void StartTimers();
  int Record();
  void EndTimers();

  const StationOptions& options_;
  LiveLine live_;
  std::string lastLogged_;
  Session session_;
  Person nobody_;
  FormMain form_;
  std::unique_ptr<Timer> secondTimer_;
  std::unique_ptr<Timer> endTimer_;
};

}  // namespace tarvolt
