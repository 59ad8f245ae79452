// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/load_data.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "files/auto_title.h"
#include "model/scoped_flag.h"
#include "text/number.h"

namespace tarvolt {
namespace {

bool RunInProgress(const RunState& run) {
  return run.phase != RunPhase::Idle;
}

void ClearChart(ChartWindow& window) {
  StripChart& chart = window.chart;
  chart.ClearData();
  chart.Title.clear();
  chart.TimeMarker.reset();
  chart.CursorChannel = -1;
  chart.ChannelVisible.fill(true);
  window.save.PendingNotes.clear();
  window.save.SavedAs.clear();
  window.save.keeping = LogKeeping{};
  window.run.DataNeedsSave = false;
  window.run.Dcount = 0;
  window.run.TotalSamples = 0;
  window.run.StoreStart = 0;
  window.run.LetGo = MinMax{};
  window.view.LeftStatus.clear();
}

void TakeNotes(const NotesBlock& notes, ChartWindow& window) {
  window.notes = notes.freeText;
  window.channelLabels = notes.labels;
  window.chart.ChannelName = notes.labels;
  window.chart.XAxisLabel = notes.xAxisLabel;
  window.chart.YAxisLabel = notes.yAxisLabel;
  window.metadata = notes.metadata;
  window.notations = notes.notations;
  for (std::size_t i = 0; i < window.run.ChannelOffset.size(); ++i) window.run.ChannelOffset[i] = Val(notes.offsets[i]);
  window.run.ChartIsUT = notes.usingUT;
  window.run.ChartIsLMST = notes.lmst;
  window.run.TimeRefZeroFile = notes.timeRefZero;
}

// Files keep the sample that a notation is pinned to, not its time.
void DisplayNotations(ChartWindow& window) {
  window.chart.NotationsShown = true;
  for (Notation& notation : window.notations.slots) {
    const bool stored = notation.index >= 0 && notation.index < window.chart.Count();
    if (!notation.text.empty() && stored) notation.stamp = window.chart.GetTime(notation.index);
  }
}

void MarkLoaded(ChartWindow& window) {
  window.chart.ChannelVisible.fill(true);
  window.run.DataNeedsSave = false;
  window.save.keeping.LoadedFromFile = true;
}

// The end in memory is one sample short, as a save writes it; that of a part is its last sample.
void SetLoadedTimes(const FileChart& file, ChartWindow& window) {
  StripChart& chart = window.chart;
  const std::int32_t count = chart.Count();
  window.run.Dcount = count;
  window.run.TotalSamples = count;
  window.header.channels = static_cast<std::int16_t>(chart.ChannelCount());
  if (count == 0) return;
  const std::int32_t end = file.partial ? count - 1 : std::min(file.range.lastIndex - 1, count - 1);
  window.header.start = chart.GetTime(0);
  window.header.end = chart.GetTime(std::max(end, 0));
  chart.XAxisMin = window.header.start;
  chart.XAxisMax = window.header.end;
  if (!chart.Samples().TimesRise()) FitX(chart);
}

// Empty while times rise.
std::string StepBackWords(const StripChart& chart) {
  const std::int32_t step = chart.Samples().FirstStepBack();
  return step < 0 ? "" : "Times step back, first at sample " + NumberText(std::int64_t{step});
}

void ShowLoaded(Session& session, ChartWindow& window, const FileChart& file) {
  window.view.Title = file.file.stem().string() + (window.IsReview() ? "  File : " : "  File: ") + OwnTitle(window);
  session.Add2SLog(file.file.string() + " Loaded from disk. ");
  const std::string stepBack = StepBackWords(window.chart);
  if (!stepBack.empty()) session.Add2SLog(file.file.string() + ": " + stepBack);
  const std::string missing = WhatIsMissing(file, window.chart);
  if (!missing.empty()) {
    session.Add2SLog(file.file.string() + ": " + missing);
    session.Tell("File Load Warning!", file.file.string() + "\n" + missing);
  }
  DoAutoTitle(session, window);
  if (file.forced) {
    session.Tell("Tarvolt",
                 "Any changes made to this data file using \nthe Salvage function will be saved only if you\nsave this "
                 "file.");
  }
  ++window.chart.RepaintRequests;
  AddRecentLoaded(session.recent, file.file.string());
  window.view.mnuRecallXY = false;
  window.view.Status.Say("File Size : " + NumberText(static_cast<std::int64_t>(file.fileSize)) +
                         " bytes    Samples Loaded: " + NumberText(std::int64_t{window.chart.Count()}) +
                         (file.partial ? " (Partial Load)" : "") + (stepBack.empty() ? "" : "    " + stepBack));
}

/// One load from the opened file on.
class WindowLoad {
 public:
  WindowLoad(Session& session, ChartWindow& window, ChartLoad& load)
      : session_(session), window_(window), load_(load) {}

  /// False when the chart on display stays.
  bool MayReplaceChart(const std::function<bool()>& makeRoom) {
    const bool chosen = load_.ChooseChannels();
    window_.loadOptions.ChannelSelected = load_.Chart().options.ChannelSelected;
    window_.loadOptions.LoadLocalOffsets = load_.Chart().options.LoadLocalOffsets;
    if (!chosen || RunInProgress(window_.run)) return false;
    return (!makeRoom || makeRoom()) && !RunInProgress(window_.run);
  }

  LoadOutcome ReplaceChart() {
    const FileChart& file = load_.Chart();
    if (!file.HasData() && window_.chart.Count() > 0) {
      Warn("does not appear to have any data");
      return LoadOutcome::Refused;
    }
    BeginLoadedChart(file, window_);
    const bool whole = load_.ReadSamples(window_.chart, [this](std::int32_t stored) { return ShowProgress(stored); });
    if (RunInProgress(window_.run)) return LoadOutcome::Refused;
    const LoadOutcome outcome = !file.HasData() ? LoadOutcome::NoData : whole ? LoadOutcome::Loaded : LoadOutcome::Torn;
    if (outcome == LoadOutcome::NoData) Warn("does not appear to have any data");
    if (outcome == LoadOutcome::Torn) Warn("could not be loaded as a whole.");
    FinishLoadedChart(file, window_);
    ShowLoaded(session_, window_, file);
    return outcome;
  }

 private:
  bool ShowProgress(std::int32_t stored) {
    const LoadRange& range = load_.Chart().range;
    window_.view.Title = NumberText(std::int64_t{stored}) + " of " +
                         NumberText(std::int64_t{range.lastIndex} - range.firstIndex + 1) + " Samples Loaded " +
                         load_.Chart().file.string();
    ++window_.chart.RepaintRequests;
    session_.host.loop.Yield(std::chrono::milliseconds(0));
    return !RunInProgress(window_.run);
  }

  void Warn(const std::string& words) {
    session_.Tell("File Load Warning!", load_.Chart().file.string() + "\n" + words);
  }

  Session& session_;
  ChartWindow& window_;
  ChartLoad& load_;
};

LoadOutcome LoadInto(Session& session, ChartWindow& window, ChartLoad& load, const std::filesystem::path& file,
                     const std::function<bool()>& makeRoom) {
  if (RunInProgress(window.run)) return LoadOutcome::Refused;
  if (const Outcome opened = load.Open(file); !opened) {
    session.Tell("File Load Aborted", opened.Words());
    return LoadOutcome::Refused;
  }
  WindowLoad inWindow(session, window, load);
  return inWindow.MayReplaceChart(makeRoom) ? inWindow.ReplaceChart() : LoadOutcome::Refused;
}

}  // namespace

std::string OwnTitle(const ChartWindow& window) {
  if (window.IsReview()) return "Review " + window.Name.substr(ChartWindow::kReviewName.size());
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

void BeginLoadedChart(const FileChart& file, ChartWindow& window) {
  ClearChart(window);
  TakeNotes(file.notes, window);
  window.header = file.header;
  StripChart& chart = window.chart;
  chart.SetChannelCount(file.channels);
  chart.ChannelPen = file.pens;
  chart.XAxisMin = file.header.start;
  chart.XAxisMax = file.header.end;
  window.run.ChannelCount = chart.ChannelCount();
}

void FinishLoadedChart(const FileChart& file, ChartWindow& window) {
  DisplayNotations(window);
  window.run.ChannelCount = window.chart.ChannelCount();
  MarkLoaded(window);
  SetLoadedTimes(file, window);
}

LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file, LoadRange& range,
                     LoadRequest request, const std::function<bool()>& makeRoom) {
  if (RunInProgress(window.run) || window.save.Loading) return LoadOutcome::Refused;
  const ScopedFlag loading(window.save.Loading);
  const std::string status = window.view.Status.Text();
  window.view.Status.Say(file.string() + " Loading... Please Wait");
  session.host.loop.Yield(std::chrono::milliseconds(0));

  request.range = range;
  request.options = window.loadOptions;
  request.stationOffsets = session.settings.channels.DefaultChannelOffset;
  ChartLoad load(session.host.files, std::move(request));
  const LoadOutcome outcome = LoadInto(session, window, load, file, makeRoom);
  if (outcome == LoadOutcome::Refused) {
    window.view.Status.Say(status);
  } else {
    range = load.Chart().range;
  }
  return outcome;
}

LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file) {
  LoadRange all;
  return LoadData(session, window, file, all);
}

}  // namespace tarvolt
