#include "files/load_finish.h"

#include <algorithm>

#include "files/auto_title.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::string_view kReviewName = "rform";

bool IsReview(const ChartWindow& window) {
  return window.Name.starts_with(kReviewName);
}

// In a part of a file notations are counted from its first sample, and those outside of it are not in this chart.
void CutNotations(const LoadRange& range, Notations& notations) {
  Notations cut;
  for (const Notation& notation : notations.slots) {
    if (notation.text.empty() || notation.index < range.firstIndex || notation.index > range.lastIndex) continue;
    cut.slots[cut.count] = notation;
    cut.slots[cut.count].index -= range.firstIndex;
    cut.count = std::min(cut.count + 1, Notations::kSlots - 1);
  }
  notations = cut;
}

// Files keep the sample that a notation is pinned to, not its time.
void DisplayNotations(ChartWindow& window) {
  window.chart.NotationsShown = true;
  for (Notation& notation : window.notations.slots) {
    const bool stored = notation.index >= 0 && notation.index < window.chart.Count();
    if (!notation.text.empty() && stored) notation.stamp = window.chart.GetTime(notation.index);
  }
}

void EnableCommands(ChartWindow& window) {
  window.view.ToolCommands = true;
  window.view.SaveCommands = true;
  window.view.InfoCommands = true;
  window.chart.ChannelVisible.fill(true);
  window.run.DataNeedsSave = false;
  window.save.LoadedFromFile = true;
}

// The end in memory is one sample short, as a save writes it; that of a part is its last sample.
void SetLoadedTimes(const FinishedLoad& load, ChartWindow& window) {
  StripChart& chart = window.chart;
  const std::int32_t count = chart.Count();
  window.run.Dcount = count;
  window.run.TotalSamples = count;
  window.header.channels = static_cast<std::int16_t>(chart.ChannelCount());
  if (count == 0) return;
  const std::int32_t end = load.partial ? count - 1 : std::min(load.range.lastIndex - 1, count - 1);
  window.header.start = chart.GetTime(0);
  window.header.end = chart.GetTime(std::max(end, 0));
  chart.XAxisMin = window.header.start;
  chart.XAxisMax = window.header.end;
}

void ShowLoaded(Session& session, ChartWindow& window, const FinishedLoad& load) {
  window.view.Title = load.file.stem().string() + (IsReview(window) ? "  File : " : "  File: ") + OwnTitle(window);
  session.Add2SLog(load.file.string() + " Loaded from disk. ");
  DoAutoTitle(session, window);
  if (load.forced) {
    session.Tell("Tarvolt",
                 "Any changes made to this data file using \nthe Salvage function will be saved only if you\nsave this "
                 "file.");
  }
  ++window.chart.RepaintRequests;
  AddRecentLoaded(session.recent, load.file.string());
  window.view.mnuRecallXY = false;
  window.view.StatusText = "File Size : " + NumberText(static_cast<std::int64_t>(load.fileSize)) +
                           " bytes    Samples Loaded: " + NumberText(std::int64_t{window.chart.Count()}) +
                           (load.partial ? " (Partial Load)" : "");
}

}  // namespace

std::string OwnTitle(const ChartWindow& window) {
  if (IsReview(window)) return "Review " + window.Name.substr(kReviewName.size());
  switch (window.Mode) {
    case SessionMode::StandAlone:
      return "  Stand Alone ";
    case SessionMode::Server:
      return "  Server Mode ";
    case SessionMode::Client:
      return "  Client Chart ";
  }
  return {};
}

void FinishLoad(Session& session, ChartWindow& window, const FinishedLoad& load) {
  if (load.partial) CutNotations(load.range, window.notations);
  DisplayNotations(window);
  window.run.ChannelCount = window.chart.ChannelCount();
  EnableCommands(window);
  SetLoadedTimes(load, window);
  ShowLoaded(session, window, load);
}

}  // namespace tarvolt
