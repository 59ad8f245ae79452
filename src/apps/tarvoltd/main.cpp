#include <QCoreApplication>
#include <iostream>

#include "apps/tarvoltd/options.h"
#include "apps/tarvoltd/station.h"
#include "host/home_folder.h"
#include "host/linux_host.h"

int main(int argc, char** argv) {
  const tarvolt::StationOptions options = tarvolt::ParseStationOptions(argc, argv);
  if (options.finished) return options.exitStatus;
  QCoreApplication application(argc, argv);
  const std::filesystem::path home = tarvolt::FindHome(options.home);
  tarvolt::HomeLock lock;
  std::string why;
  if (!lock.Take(home, why)) {
    std::cerr << "tarvoltd: " << why << "\n";
    return 1;
  }
  tarvolt::LinuxHost host;
  tarvolt::Station station(host, options, home);
  return station.Run();
}
