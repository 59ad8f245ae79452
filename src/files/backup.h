#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The disk backup of a run: a data file that grows with every accepted sample and is complete at every moment.
/// A write that fails is told once and cut back to the last whole sample; the samples it missed are still in the
/// store and are written with the next one that succeeds. A backup file that vanished is made anew from the store.
class LocalBackup {
 public:
  LocalBackup(Session& session, ChartWindow& window);

  /// Starts the backup of a new log, removing the old file. With DiskBackUp off only marks it inactive.
  void InitLocalBU();

  /// Appends the samples of the store that the file does not hold yet; opens and closes the file.
  void LocalBackUp();

  /// True when every sample of the store is in the file.
  bool IsComplete() const;

 private:
  Session& session_;
  ChartWindow& window_;
};

}  // namespace tarvolt
