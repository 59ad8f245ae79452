// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/equation_commands.h"

#include <algorithm>
#include <utility>

#include "automation/channel_equations/default_equations.h"
#include "core/chart/apply_function.h"
#include "core/chart/command_states.h"
#include "files/backup_source.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kTitle = "Apply Function to Loaded Chart Data";
constexpr const char* kTitleIncoming = "Apply Function to Incoming Data";
constexpr const char* kInUse = "The chart is in use now: no equation was applied.";

// A tick beside an empty text is no equation.
bool AnyApplies(const EquationSet& set, int channels) {
  for (int channel = 0; channel < channels; ++channel) {
    if (set.Applies(channel)) return true;
  }
  return false;
}

}  // namespace

EquationCommands::EquationCommands(Recorder& recorder, std::function<void()> save)
    : recorder_(recorder), session_(recorder.session), window_(recorder.window), save_(std::move(save)) {}

bool EquationCommands::CanApplyFunction() const {
  constexpr std::int32_t kIndexToExceed = 4;  // of the newest sample of a run that has ended
  const bool hasSamples = window_.save.keeping.LoadedFromFile || window_.run.Dcount > kIndexToExceed;
  return StatesOf(window_).ToolCommands && hasSamples;
}

void EquationCommands::mnuChannelEquations() {
  if (!window_.AtRest()) return;
  EquationSet set = EquationsOf(session_.settings);
  if (!recorder_.person.EditEquations({kTitleIncoming, kChannels, true}, set)) return;
  StoreEquations(session_, set, AnyApplies(set, kChannels));
  const Outcome sound = recorder_.equations.Check(set, kChannels);
  if (!sound) Refuse(kTitleIncoming, sound.Words());
}

// Equations change the samples in the chart, and the file is then written from them: it must have them all.
std::string EquationCommands::WhyChartMustStay() const {
  if (recorder_.unsaved.ChartWaits()) {
    return "The last chart waits for room on the disk: it cannot be changed before it is saved.";
  }
  if (window_.run.DataNeedsSave && window_.save.keeping.BackupAlone()) {
    return "The chart shows only the end of its log: it cannot be changed before the log is saved.";
  }
  return {};
}

// Anything may happen while a person is asked: what was found before is looked at again behind each question.
void EquationCommands::mnuApplyFunction() {
  if (!CanApplyFunction()) return;
  if (const std::string why = WhyChartMustStay(); !why.empty()) return Refuse(kTitle, why);
  const std::optional<int> added = AskForNewChannels();
  if (!added) return;
  const int channels = std::min(window_.chart.ChannelCount() + *added, kChannels);
  EquationSet set = chartEquations_.value_or(EquationsOf(session_.settings));
  if (!recorder_.person.EditEquations({kTitle, channels}, set)) return;
  chartEquations_ = set;
  if (!AnyApplies(set, channels)) return Refuse(kTitle, "No Channels were selected for processing");
  if (!MayGoOn()) return Refuse(kTitle, kInUse);
  const Outcome applied = ApplyFunction(session_, window_, recorder_.equations, set, *added);
  if (!applied) return Refuse(kTitle, applied.Words());
  recorder_.commands.look.ShowChartLegend();
  SaveChanged();
}

bool EquationCommands::MayGoOn() const {
  return CanApplyFunction() && !EndRequested() && WhyChartMustStay().empty();
}

// At the end of the program the chart is settled with everything else, and nobody is asked here.
void EquationCommands::SaveChanged() {
  if (EndRequested()) return;
  save_();
  if (window_.run.DataNeedsSave && !recorder_.unsaved.ChartWaits()) {
    Refuse(kTitle, "The equations were applied, but the changed chart was not saved.");
  }
}

// How many, 0 for none; nothing when the answer is refused.
std::optional<int> EquationCommands::AskForNewChannels() {
  const int free = FreeChannels(window_.chart);
  if (free == 0) return 0;
  const std::string prompt = "Enter how many of the " + NumberText(std::int64_t{free}) +
                             " free channels are to become new\nChannels for equation data.\n"
                             "Enter 0 or press Cancel for no new channels.";
  const std::optional<std::string> entered = session_.host.dialogs.AskText({"New Equation Channels?", prompt, "0"});
  const std::int32_t count = entered ? ValLong(*entered) : 0;
  if (count <= free) return std::max(count, 0);
  Refuse(kTitle, "You cannot add that many channels.");
  return std::nullopt;
}

// Nothing is reported while the program ends.
void EquationCommands::Refuse(const std::string& title, const std::string& text) {
  if (EndRequested()) return;
  window_.view.Status.Hold(text);
  session_.Tell(title, text);
}

}  // namespace tarvolt
