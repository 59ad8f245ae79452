#include <algorithm>
#include <chrono>

#include "core/form_main.h"
#include "files/backup_source.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kTitle = "Apply Function to Loaded Chart Data";
constexpr const char* kInUse = "The chart is in use now: no equation was applied.";

// A tick beside an empty text is no equation.
bool AnyApplies(const EquationSet& set, int channels) {
  for (int channel = 0; channel < channels; ++channel) {
    if (set.Applies(channel)) return true;
  }
  return false;
}

// Equations and their switch are stored with one write: after a crash they still belong to each other.
void StoreIncoming(Session& session) {
  const Settings& settings = session.settings;
  const auto store = [&session](const std::string& key, const std::string& text) {
    if (!session.IsOverridden(key)) session.store.SaveSetting(Section::Settings, key, text);
  };
  session.store.BeginBatch();
  for (std::size_t channel = 0; channel < settings.Equ.size(); ++channel) {
    const std::string number = NumberText(static_cast<std::int64_t>(channel));
    store("Equ" + number, settings.Equ[channel]);
    store("ApplyToCH" + number, NumberText(std::int64_t{settings.ApplyToCH[channel]}));
  }
  store("ApplyToIncoming", settings.ApplyToIncoming ? "True" : "False");
  session.store.EndBatch();
}

}  // namespace

bool FormMain::ChartIsAtRest() const {
  const ChartWindow& window = recorder_.window;
  const RunState& run = window.run;
  return !run.ChartRunning && !run.Starting && !run.Stopping && !window.save.Loading;
}

bool FormMain::CanApplyFunction() const {
  constexpr std::int32_t kIndexToExceed = 4;  // of the newest sample of a run that has ended
  const ChartWindow& window = recorder_.window;
  const bool hasSamples = window.save.LoadedFromFile || window.run.Dcount > kIndexToExceed;
  return ChartIsAtRest() && window.view.ToolCommands && hasSamples;
}

void FormMain::mnuChannelEquations() {
  if (!ChartIsAtRest() || !editEquations_) return;
  EquationSet set = EquationsOf(session_.settings);
  if (!editEquations_({"Apply Function to Incoming Data", kChannels}, set)) return;
  PutEquations(set, session_.settings);
  session_.settings.ApplyToIncoming = AnyApplies(set, kChannels);
  StoreIncoming(session_);
}

// Equations change the samples in the chart, and the file is then written from them: it must have them all.
std::string FormMain::WhyChartMustStay() const {
  if (recorder_.saveFailed) {
    return "The last chart waits for room on the disk: it cannot be changed before it is saved.";
  }
  const ChartWindow& window = recorder_.window;
  if (window.run.DataNeedsSave && RunLiesInBackup(session_.settings, window)) {
    return "The chart shows only the end of its log: it cannot be changed before the log is saved.";
  }
  return {};
}

// Anything may happen while a person is asked: what was found before is looked at again behind each question.
void FormMain::mnuApplyFunction() {
  ChartWindow& window = recorder_.window;
  if (!CanApplyFunction() || !editEquations_) return;
  if (const std::string why = WhyChartMustStay(); !why.empty()) return RefuseEquations(why);
  const std::optional<int> added = AskForNewChannels();
  if (!added) return;
  const int channels = std::min(window.chart.ChannelCount() + *added, kChannels);
  EquationSet set = EquationsOf(session_.settings);
  if (!editEquations_({kTitle, channels}, set)) return;
  if (!AnyApplies(set, channels)) return RefuseEquations("No Channels were selected for processing");
  if (!MayGoOn()) return RefuseEquations(kInUse);
  if (*added > 0) {
    ShowWork(window, "Adding New Channels ... Please Wait");
    session_.host.loop.Yield(std::chrono::milliseconds(0));
    if (!MayGoOn()) return RefuseEquations(kInUse);
    if (!AddEquationChannels(window, *added)) return RefuseEquations("You cannot add that many channels.");
  }
  // Kept for the next chart, but never in place of those that work on incoming samples.
  if (!session_.settings.ApplyToIncoming) PutEquations(set, session_.settings);
  ApplyFunction(session_, window, recorder_.equations, set);
  recorder_.commands.ShowChartLegend();
  SaveChanged();
}

bool FormMain::MayGoOn() const {
  return CanApplyFunction() && !EndRequested() && WhyChartMustStay().empty();
}

// At the end of the program the chart is settled with everything else, and nobody is asked here.
void FormMain::SaveChanged() {
  if (EndRequested()) return;
  mnuSave();
  if (recorder_.window.run.DataNeedsSave && !recorder_.saveFailed) {
    RefuseEquations("The equations were applied, but the changed chart was not saved.");
  }
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

// Nothing is told while the program ends.
void FormMain::RefuseEquations(const std::string& text) {
  if (EndRequested()) return;
  ShowStatus(text);
  session_.Tell(kTitle, text);
}

}  // namespace tarvolt
