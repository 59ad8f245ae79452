// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>

#include "host/headless_dialogs.h"
#include "host/make_host.h"
#include "host/temp_folder.h"
#include "platform/machine.h"
#include "sim/sim_host.h"

namespace tarvolt {
namespace {

class RealMachine final : public Machine {
 public:
  Host Record() override { return owner_->host; }
  std::filesystem::path Folder() override { return folder_.Path(); }

 private:
  std::unique_ptr<HostOwner> owner_ =
      MakeHost(*QCoreApplication::instance(), std::make_unique<HeadlessDialogs>([](const std::string&) {}));
  TempFolder folder_;
};

class SimulatedMachine final : public Machine {
 public:
  Host Record() override { return host_.Record(); }
  std::filesystem::path Folder() override {
    std::error_code error;
    host_.disk.MakeFolders("/station", error);
    return "/station";
  }

 private:
  SimHost host_{1};
};

}  // namespace

std::unique_ptr<Machine> MakeRealMachine() {
  return std::make_unique<RealMachine>();
}

std::unique_ptr<Machine> MakeSimulatedMachine() {
  return std::make_unique<SimulatedMachine>();
}

}  // namespace tarvolt

// Qt's loop, timers and sockets need the one application object for all tests of a process.
int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
