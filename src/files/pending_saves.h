// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>

#include "files/save_plan.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Logs whose save failed at a turnover while the run goes on. Each keeps its samples in memory and its backup aside on
/// disk until there is room.
class PendingSaves {
 public:
  /// Logs that may wait.
  static constexpr std::size_t kLimit = 8;

  /// None waits yet.
  explicit PendingSaves(Session& session);

  /// Takes the samples, header, notes and backup file of the window, to be saved under `name`. False when kLimit logs
  /// wait already, or the backup alone has the whole log and cannot be moved: then nothing is taken.
  bool SetAside(ChartWindow& window, const std::filesystem::path& name);

  /// Tries to save the oldest that waits. Called once a second or less. Logs only success: the failure that brought
  /// the log here was reported. After a failure some calls pass without a try, more with each failure.
  void Retry();

  /// Tries to save all that wait, now; stops at the first that fails.
  void SaveAll();

  /// True when none waits.
  bool Empty() const;

 private:
  struct Waiting {
    SavePlan plan;
    SampleColumns samples;
    std::filesystem::path name;
    std::filesystem::path backup;  ///< where the log's backup was put; empty when there is none
  };

  bool MoveBackup(ChartWindow& window, std::filesystem::path& aside);
  bool SaveOldest();

  Session& session_;
  std::deque<Waiting> waiting_;
  int pause_ = 0;      ///< calls of Retry to let pass
  int nextPause_ = 1;  ///< after the next failure
};

}  // namespace tarvolt
