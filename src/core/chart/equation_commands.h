// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/run/recorder.h"

namespace tarvolt {

/// The commands of a window that let a person work with equations.
class EquationCommands {
 public:
  /// Works on the parts of `recorder`, which outlives it. `save` is the command that saves the chart.
  EquationCommands(Recorder& recorder, std::function<void()> save);

  /// The equations that work on the samples of the runs to come: edits them, and switches ApplyToIncoming on when one
  /// is ticked, off when none is. Reports one that cannot be solved. Does nothing during a run. Yields.
  void mnuChannelEquations();

  /// Applies equations to the chart on display, which may get new channels for them, and saves it as a new file. Those
  /// of incoming samples stay as they are. Reports what it is refused for, and when the rules of saving leave the
  /// changed chart unsaved. Yields.
  void mnuApplyFunction();

  /// True while there is a chart at rest that has enough samples.
  bool CanApplyFunction() const;

 private:
  std::optional<int> AskForNewChannels();
  std::string WhyChartMustStay() const;
  bool MayGoOn() const;
  void SaveChanged();
  void Refuse(const std::string& title, const std::string& text);
  bool EndRequested() const { return window_.run.EndRequested; }

  Recorder& recorder_;
  Session& session_;
  ChartWindow& window_;
  std::function<void()> save_;
  std::optional<EquationSet> chartEquations_;  ///< those last tried on a chart, for the next one
};

}  // namespace tarvolt
