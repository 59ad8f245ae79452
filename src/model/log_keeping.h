// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>

namespace tarvolt {

/// The form in which the samples of a log are written.
struct SampleForm {
  int channels = 1;
  bool timeStamps = true;
  bool integers = false;
};

/// Where the samples of the chart on display lie. Settled when its log begins or it is loaded, whatever becomes of the
/// settings; asked by the save, the turnover and Save View alike.
struct LogKeeping {
  bool LoadedFromFile = false;  ///< all in memory
  bool Mini = false;            ///< memory keeps the last stretch of the log alone
  bool BackupWanted = false;    ///< memory lets none go that is in no backup
  bool BackupActive = false;    ///< LocalBackupFile has all of them
  std::filesystem::path LocalBackupFile;
  SampleForm Form;  ///< of the backup, and of the file that the log is saved to

  /// True when samples of the log are in the backup alone: names and header times are then those of the run.
  bool BackupAlone() const { return Mini && BackupActive; }

  /// False for a log of which nothing is saved: memory lets samples go and there is no backup.
  bool IsKept() const { return !Mini || BackupWanted; }
};

}  // namespace tarvolt
