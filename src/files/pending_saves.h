#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Logs whose save failed at a turnover while the run goes on. Each keeps its samples in memory and its backup aside on
/// disk until there is room.
class PendingSaves {
 public:
  static constexpr std::size_t kLimit = 8;

  explicit PendingSaves(Session& session);

  /// Takes the samples, header, notes and backup file of the window, to be saved under `name`. False when kLimit logs
  /// wait already: then nothing is taken.
  bool SetAside(ChartWindow& window, const std::filesystem::path& name);

  /// Tries to save the oldest that waits. Called once a second or less; tells only success and the first failure.
  void Retry();

  bool Empty() const;

 private:
  struct Waiting {
    ChartWindow chart;
    std::filesystem::path name;
    std::filesystem::path backup;
  };

  Session& session_;
  std::deque<Waiting> waiting_;
};

}  // namespace tarvolt
