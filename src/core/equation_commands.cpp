#include <algorithm>

#include "core/form_main.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kTitle = "Apply Function to Loaded Chart Data";

bool AnyTicked(const EquationSet& set, int channels) {
  for (int channel = 0; channel < channels; ++channel) {
    if (set.ApplyToCH[static_cast<std::size_t>(channel)] != 0) return true;
  }
  return false;
}

}  // namespace

bool FormMain::ChartIsAtRest() const {
  const ChartWindow& window = recorder_.window;
  const RunState& run = window.run;
  return !run.ChartRunning && !run.Starting && !run.Stopping && !window.save.Loading;
}

bool FormMain::CanApplyFunction() const {
  constexpr std::int32_t kLeastSamples = 5;
  return ChartIsAtRest() && recorder_.window.view.ToolCommands && recorder_.window.chart.Count() >= kLeastSamples;
}

void FormMain::mnuChannelEquations() {
  if (!ChartIsAtRest() || !editEquations_) return;
  EquationSet set = EquationsOf(session_.settings);
  if (!editEquations_({"Apply Function to Incoming Data", kChannels}, set)) return;
  PutEquations(set, session_.settings);
  session_.settings.ApplyToIncoming = AnyTicked(set, kChannels);
  if (session_.IsOverridden("ApplyToIncoming")) return;
  session_.store.SaveSetting(Section::Settings, "ApplyToIncoming",
                             session_.settings.ApplyToIncoming ? "True" : "False");
}

// Anything may happen while a person is asked: what was found before is looked at again behind each question.
void FormMain::mnuApplyFunction() {
  ChartWindow& window = recorder_.window;
  if (!CanApplyFunction() || !editEquations_) return;
  if (recorder_.saveFailed) {
    return RefuseEquations("The last chart waits for room on the disk: it cannot be changed before it is saved.");
  }
  const std::optional<int> added = AskForNewChannels();
  if (!added) return;
  const int channels = std::min(window.chart.ChannelCount() + *added, kChannels);
  EquationSet set = EquationsOf(session_.settings);
  if (!editEquations_({kTitle, channels}, set)) return;
  PutEquations(set, session_.settings);
  if (!AnyTicked(set, channels)) return RefuseEquations("No Channels were selected for processing");
  if (!CanApplyFunction() || recorder_.saveFailed) {
    return RefuseEquations("The chart is in use now: no equation was applied.");
  }
  if (!AddNewChannels(*added)) return RefuseEquations("You cannot add that many channels.");
  ApplyFunction(session_, window, recorder_.equations, set);
  recorder_.commands.ShowChartLegend();
  mnuSave();
}

// How many, 0 for none; nothing when the answer is refused.
std::optional<int> FormMain::AskForNewChannels() {
  const int free = FreeChannels(recorder_.window.chart);
  if (free == 0) return 0;
  const std::string prompt = "Enter how many of the " + NumberText(std::int64_t{free}) +
                             " free channels are to become new\nChannels for equation data.\n"
                             "Enter 0 or press Cancel for no new channels.";
  const std::optional<std::string> entered = session_.host.dialogs.AskText({"New Equation Channels?", prompt, "0"});
  const std::int32_t count = entered ? ValLong(*entered) : 0;
  if (count <= free) return std::max(count, 0);
  RefuseEquations("You cannot add that many channels.");
  return std::nullopt;
}

bool FormMain::AddNewChannels(int count) {
  if (count == 0) return true;
  recorder_.window.view.StatusText = "Adding New Channels ... Please Wait";
  return AddEquationChannels(recorder_.window, count);
}

void FormMain::RefuseEquations(const std::string& text) {
  ShowStatus(text);
  session_.Tell(kTitle, text);
}

}  // namespace tarvolt
