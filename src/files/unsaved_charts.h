// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/pending_saves.h"
#include "files/saving.h"
#include "text/result.h"

namespace tarvolt {

/// The one owner of what is not saved yet: the chart on display that the disk refused or nobody has decided about, the
/// logs set aside, the question to a person, the next try, and the run marker. While no run is on the marker says
/// "Running" as long as a backup holds samples that may still be wanted, so that the next start finds them whatever
/// happens.
class UnsavedCharts {
 public:
  /// Both outlive it. Nothing is unsaved yet.
  UnsavedCharts(Session& session, ChartWindow& window) : session_(session), window_(window), pending_(session) {}

  /// The end of a run with data: saves by the rules of the station. May ask for the name, and yields only then.
  SaveOutcome SaveAtStop(bool mayPrompt);

  /// The end of a run without data.
  void NothingToSave();

  /// A person wants the chart on display saved. Yields when the name is asked for. After a Cancel all is as it was.
  SaveOutcome SaveAsked();

  /// Readies the window for another chart. A chart that was never saved is asked about: it is saved, or put into the
  /// recovery folder; without a person it goes there. One that the disk refused is set aside until there is room. False
  /// when the person cancelled: the chart stays. Fails in words when it can go nowhere. May yield.
  Result<bool> MakeRoom();

  /// The end of the program: like MakeRoom, but a Cancel puts the chart into the recovery folder. May yield.
  void SettleAtEnd();

  /// Takes a log whose save failed at a turnover, to be saved under `name` when there is room. False when too many
  /// wait.
  bool SetAside(const std::filesystem::path& name) { return pending_.SetAside(window_, name); }

  /// Tries again to save what the disk refused. Called once a second or less.
  void Retry();

  /// True while the chart on display waits for a disk that refused it.
  bool ChartWaits() const { return failed_; }

  /// True while samples wait for a disk that refused them.
  bool Any() const { return failed_ || !pending_.Empty(); }

 private:
  bool ChartIsUnsaved() const;
  SaveOutcome Save(SaveReason reason, bool mayPrompt);
  Result<bool> SetChartAside();
  bool KeepInRecovery();
  void SetMarker();

  Session& session_;
  ChartWindow& window_;
  PendingSaves pending_;
  bool failed_ = false;    ///< the disk refused the chart on display
  bool unwanted_ = false;  ///< a rule says that nobody wants it
};

}  // namespace tarvolt
