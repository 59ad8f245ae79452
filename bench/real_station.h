// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QTemporaryDir>
#include <filesystem>
#include <memory>
#include <string>

#include "host/headless_dialogs.h"
#include "host/make_host.h"
#include "model/chart_window.h"
#include "model/session.h"
#include "sample_values.h"

namespace tarvolt::bench {

/// A folder of its own, removed with all that is in it.
class TemporaryFolder {
 public:
  std::filesystem::path Path() const { return folder_.path().toStdString(); }

 private:
  QTemporaryDir folder_;
};

/// The real machine, silent. The program's application must be there already.
inline std::unique_ptr<HostOwner> MakeSilentHost() {
  return MakeHost(*QCoreApplication::instance(), std::make_unique<HeadlessDialogs>([](const std::string&) {}));
}

/// A session and a window with an empty chart on the real machine, in a temporary home.
struct RealStation {
  RealStation() {
    session.settings.files.DataDirectory = folder.Path().string();
    session.settings.files.DiskBackUp = true;
    window.chart.SetChannelCount(kBenchChannels);
    window.run.ChannelCount = kBenchChannels;
  }

  TemporaryFolder folder;
  std::unique_ptr<HostOwner> machine = MakeSilentHost();
  Session session{machine->host, folder.Path()};
  ChartWindow window;
};

}  // namespace tarvolt::bench
