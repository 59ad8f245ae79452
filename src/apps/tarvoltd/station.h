#pragma once

#include <memory>

#include "apps/tarvoltd/options.h"
#include "apps/tarvoltd/status_line.h"
#include "core/form_main.h"
#include "host/linux_host.h"

namespace tarvolt {

/// The unattended station: the recorder on the real host, driven by the command line and by signals.
class Station {
 public:
  Station(LinuxHost& host, const StationOptions& options, const std::filesystem::path& home);

  /// Loads, records as asked, and ends cleanly. Returns the exit status.
  int Run();

 private:
  void ListenToTheOutside();
  bool Load();
  int Record();
  void Summarise();

  LinuxHost& host_;
  const StationOptions& options_;
  StatusLine status_;
  std::string lastLogged_;
  Session session_;
  FormMain form_;
  std::unique_ptr<Timer> secondTimer_;
  std::unique_ptr<Timer> endTimer_;
};

}  // namespace tarvolt
