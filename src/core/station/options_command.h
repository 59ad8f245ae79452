// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/run/chart_run.h"
#include "core/run/recorder.h"
#include "core/station/options_check.h"
#include "model/session.h"

namespace tarvolt {

/// Sees to it that the data folder of `draft` is there; an empty one is the folder under home and needs nothing. A
/// missing folder is made: the station's own at once, another with ShowMsgBox after asking. Gives why it cannot be
/// used. Yields in the question.
std::optional<OptionsProblem> ReadyDataDirectory(Session& session, const Settings& draft);

/// The command of the options dialog.
class OptionsCommand {
 public:
  /// Works on the parts of `recorder`; both outlive it.
  OptionsCommand(Recorder& recorder, ChartRun& chartRun);

  /// Lays the texts of the dialog over the settings, checks them, puts them in force and stores them. What an override
  /// of this run hides stays as it is stored. Gives what they are refused for; then nothing has changed. `pageKeys` are
  /// the other settings of the pages that were changed: what stands against a setting of another page is a warning.
  /// `notes`, when given, becomes the observer's notes. Yields while it asks about a data folder that is not there.
  std::optional<OptionsProblem> Confirm(const OptionTexts& texts, const std::optional<std::string>& notes,
                                        const std::vector<std::string>& pageKeys = {});

  /// After the options dialog or a profile: what may change at once changes. A run, and a chart that may still be
  /// saved, keep the base of their time.
  void UpdateAfterOptionsChange();

 private:
  std::optional<OptionsProblem> TakeAnotherCard(const OptionTexts& texts, Settings& draft) const;
  std::optional<OptionsProblem> Take(const OptionTexts& texts, Settings& draft,
                                     std::vector<OptionsProblem>& lifted) const;
  void Apply(const Settings& draft);

  Recorder& recorder_;
  ChartRun& chartRun_;
  Session& session_;
};

}  // namespace tarvolt
