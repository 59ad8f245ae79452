#include "files/load.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>

#include "files/data_file_reader.h"
#include "files/header_info.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::int32_t kSamplesBetweenYields = 5000;

/// Holds other loads off while it lives.
class LoadingFlag {
 public:
  explicit LoadingFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~LoadingFlag() { flag_ = false; }
  LoadingFlag(const LoadingFlag&) = delete;
  LoadingFlag& operator=(const LoadingFlag&) = delete;

 private:
  bool& flag_;
};

bool RunInProgress(const RunState& run) {
  return run.ChartRunning || run.Starting || run.chartState != ChartState::Idle;
}

void ClearChart(ChartWindow& window) {
  getBlankHeaderInfo(window);
  window.channelLabels.fill({});
  window.chart.ChannelName.fill({});
  window.chart.XAxisLabel.clear();
  window.chart.YAxisLabel.clear();
  window.chart.Title.clear();
  window.chart.ClearData();
  window.metadata.DeleteMetaData();
  window.notations = Notations{};
  window.save.PendingNotes.clear();
  window.save.SavedAs.clear();
  window.run.Dcount = 0;
  window.run.TotalSamples = 0;
  window.run.StoreStart = 0;
}

std::string ModeTitle(SessionMode mode) {
  switch (mode) {
    case SessionMode::StandAlone:
      return "  Stand Alone ";
    case SessionMode::Server:
      return "  Server Mode ";
    case SessionMode::Client:
      return "  Client Chart ";
  }
  return {};
}

void TellRefusal(Session& session, OpenResult result, const std::string& name) {
  const char* const title = "File Load Aborted";
  switch (result) {
    case OpenResult::Ok:
      return;
    case OpenResult::Missing:
      return session.Tell(title, "Cannot Find the file: " + name + "\n");
    case OpenResult::TooShort:
      return session.Tell(title, "The file: " + name + "\nAppears to have no data.");
    case OpenResult::Corrupted:
      return session.Tell(title, "The file: " + name + "\nIs corrupted or not a valid data file.");
    case OpenResult::Unreadable:
      return session.Tell(title, "The file: " + name + "\nCannot be read.");
  }
}

void TakeNotes(const ParsedNotes& notes, ChartWindow& window) {
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

void ReadyChart(const DataFileReader& reader, ChartWindow& window) {
  StripChart& chart = window.chart;
  window.run.ChannelCount = reader.Layout().channels;
  chart.SetChannelCount(reader.Layout().channels);
  chart.SetCapacity(std::max(chart.Capacity(), reader.LastIndex() + 1));
  chart.XAxisMin = reader.Header().start;
  chart.XAxisMax = reader.Header().end;
  chart.ChannelVisible.fill(true);
}

void ShowProgress(ChartWindow& window, std::int32_t loaded, std::int32_t range, const std::string& name) {
  window.view.Title =
      NumberText(std::int64_t{loaded}) + " of " + NumberText(std::int64_t{range}) + " Samples Loaded " + name;
  ++window.chart.RepaintRequests;
}

// Ends early at a sample that the disk refuses, when the chart is full, or when a run began during a yield; false then.
bool ReadSamples(Session& session, ChartWindow& window, DataFileReader& reader, const std::string& name) {
  const std::int32_t range = reader.LastIndex() + 1;
  FileSample sample;
  for (std::int32_t i = 0; i < range; ++i) {
    if (!reader.ReadSample(i, sample)) return false;
    if (window.chart.AddTime(sample.time) != i || window.chart.Count() != i + 1) return false;
    for (int channel = 0; channel < reader.Layout().channels; ++channel)
      window.chart.SetValue(channel, i, sample.values[channel]);
    if ((i + 1) % kSamplesBetweenYields != 0) continue;
    ShowProgress(window, i + 1, range, name);
    session.host.loop.Yield(std::chrono::milliseconds(0));
    if (RunInProgress(window.run)) return false;
  }
  return true;
}

// The header in memory then tells what was loaded; its end is one sample short, as a save writes it.
void SetLoadedTimes(ChartWindow& window) {
  StripChart& chart = window.chart;
  const std::int32_t count = chart.Count();
  window.run.Dcount = count;
  window.run.TotalSamples = count;
  if (count == 0) return;
  window.header.start = chart.GetTime(0);
  window.header.end = chart.GetTime(std::max(count - 2, 0));
  chart.XAxisMin = window.header.start;
  chart.XAxisMax = window.header.end;
}

void FinishLoad(Session& session, ChartWindow& window, const std::filesystem::path& file, std::uint64_t fileSize) {
  SetLoadedTimes(window);
  window.save.LoadedFromFile = true;
  window.run.DataNeedsSave = false;
  WindowState& view = window.view;
  view.ToolCommands = true;
  view.SaveCommands = true;
  view.InfoCommands = true;
  const bool isReview = window.Name.starts_with("rform");
  view.Title = file.stem().string() + (isReview ? "  File : " : "  File: ") + ModeTitle(window.Mode);
  view.StatusText = "File Size : " + NumberText(static_cast<std::int64_t>(fileSize)) +
                    " bytes    Samples Loaded: " + NumberText(std::int64_t{window.chart.Count()});
  session.Add2SLog(file.string() + " Loaded from disk. ");
  AddRecentLoaded(session.recent, file.string());
  ++window.chart.RepaintRequests;
}

}  // namespace

bool LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file) {
  if (RunInProgress(window.run) || window.save.Loading) return false;
  const LoadingFlag loading(window.save.Loading);
  const std::string name = file.string();
  ClearChart(window);
  window.view.StatusText = name + " Loading... Please Wait";
  session.host.loop.Yield(std::chrono::milliseconds(0));
  if (RunInProgress(window.run)) return false;

  DataFileReader reader(session.host.files);
  const OpenResult opened = reader.Open(file);
  if (opened != OpenResult::Ok) {
    TellRefusal(session, opened, name);
    window.view.Title = ModeTitle(window.Mode);
    window.view.StatusText.clear();
    return false;
  }
  window.header = reader.Header();
  TakeNotes(reader.Notes(), window);
  ReadyChart(reader, window);
  const bool usable = reader.LastIndex() >= 2;
  if (!usable) session.Tell("File Load Warning!", name + "\ndoes not appear to have any data");
  const bool whole = usable && ReadSamples(session, window, reader, name);
  if (RunInProgress(window.run)) return false;
  if (usable && !whole) session.Tell("File Load Warning!", name + "\ncould not be loaded as a whole.");
  FinishLoad(session, window, file, reader.FileSize());
  return whole;
}

}  // namespace tarvolt
