// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "logs/session_log.h"
#include "model/run_listener.h"

namespace tarvolt {

/// Offers the events of a run to its listeners in their order. A listener that fails is named in the session log, once
/// per log, and costs neither the sample nor the others theirs.
class RunEvents final : public RunListener {
 public:
  /// `log` outlives it. Nobody listens yet.
  explicit RunEvents(SessionLog& log) : log_(log) {}

  /// Adds a listener behind those there are. It outlives this object; `name` is how the session log calls it.
  void Add(RunListener& listener, std::string name) { listeners_.push_back({&listener, std::move(name)}); }

  void LogBegan() override;
  void SampleFinished(const FinishedSample& sample) override;
  void LogEnded(LogEnd why) override;
  void RunEnded() override;

 private:
  struct Entry {
    RunListener* listener;
    std::string name;
    bool reported = false;
  };
  template <class Event>
  void Offer(Event event);

  SessionLog& log_;
  std::vector<Entry> listeners_;
};

}  // namespace tarvolt
