#include "files/load.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "files/data_file_reader.h"
#include "files/header_info.h"
#include "files/load_finish.h"
#include "files/load_samples.h"
#include "text/number.h"

namespace tarvolt {
namespace {

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

void ClearChart(ChartWindow& window) {
  getBlankHeaderInfo(window);
  window.channelLabels.fill({});
  window.chart.ChannelName.fill({});
  window.chart.ChannelPen = StripChart::kOwnPens;
  window.chart.XAxisLabel.clear();
  window.chart.YAxisLabel.clear();
  window.chart.Title.clear();
  window.chart.TimeMarker.reset();
  window.chart.CursorChannel = -1;
  window.chart.ClearData();
  window.metadata.DeleteMetaData();
  window.notations = Notations{};
  window.save.PendingNotes.clear();
  window.save.SavedAs.clear();
  window.save.LoadedFromFile = false;
  window.save.BackupActive = false;
  window.run.DataNeedsSave = false;
  window.run.Dcount = 0;
  window.run.TotalSamples = 0;
  window.run.StoreStart = 0;
  window.view.LeftStatus.clear();
  window.view.ToolCommands = false;
  window.view.SaveCommands = false;
  window.view.InfoCommands = false;
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

void HoldRange(std::int32_t lastOfFile, LoadRange& range) {
  if (range.lastIndex > lastOfFile || range.lastIndex <= 0) range.lastIndex = lastOfFile;
  if (range.firstIndex > range.lastIndex || range.firstIndex < 0) range.firstIndex = 0;
}

// A chart keeps its channels from the first sample on.
void ReadyChart(const DataFileReader& reader, int channels, ChartWindow& window) {
  StripChart& chart = window.chart;
  chart.SetChannelCount(channels);
  window.run.ChannelCount = chart.ChannelCount();
  chart.SetCapacity(std::max(chart.Capacity(), reader.LastIndex() + 1));
  chart.XAxisMin = reader.Header().start;
  chart.XAxisMax = reader.Header().end;
  chart.ChannelVisible.fill(true);
}

// The table is emptied before the ticks are taken over: they are only added to it, and a form that was cancelled leaves
// no channel.
void AskForChannels(const LoadRequest& request, const ParsedNotes& notes, int channels, LoadOptions& options) {
  options.ChannelSelected.fill(false);
  std::fill_n(options.ChannelSelected.begin(), std::min(channels, kChannels), true);
  if (!request.askChannels) return;
  const std::optional<ChannelAnswer> answer =
      request.askChannels({channels, notes.labels, options.ChannelSelected, options.LoadLocalOffsets});
  options.ChannelSelected.fill(false);
  if (!answer) return;
  options.ChannelSelected = answer->ticked;
  options.LoadLocalOffsets = answer->localOffsets;
}

/// One load from the opened file on. `options` is the load's own copy: events during a yield may touch the window's.
class OpenedLoad {
 public:
  OpenedLoad(Session& session, ChartWindow& window, DataFileReader& reader, const LoadRequest& request)
      : session_(session), window_(window), reader_(reader), request_(request), options_(window.loadOptions) {}

  LoadOutcome Run(const std::filesystem::path& file, LoadRange& range) {
    const bool partial = range.firstIndex >= 1 || range.lastIndex >= 1;
    reader_.Force(request_.forced);
    window_.header = reader_.Header();
    TakeNotes(reader_.Notes(), window_);
    LoadOutcome outcome = LoadOutcome::NoData;
    if (reader_.LastIndex() >= 2) {
      HoldRange(reader_.LastIndex(), range);
      outcome = LoadSamples(range, file.string());
      if (outcome == LoadOutcome::Refused) return outcome;
    } else {
      ReadyChart(reader_, reader_.Layout().channels + request_.extraChannels, window_);
      session_.Tell("File Load Warning!", file.string() + "\ndoes not appear to have any data");
    }
    FinishLoad(session_, window_, {file, reader_.FileSize(), range, partial, request_.forced.Any()});
    return outcome;
  }

 private:
  LoadOutcome LoadSamples(const LoadRange& range, const std::string& name) {
    ChannelMap channels = ChooseChannels();
    if (RunInProgress(window_.run)) return LoadOutcome::Refused;
    if (channels.count == 0) {
      window_.view.StatusText.clear();
      return LoadOutcome::Refused;
    }
    AddOffsets(options_, session_, reader_.Notes(), channels);
    ReadyChart(reader_, channels.count + request_.extraChannels, window_);
    const bool whole = ReadSamples(session_, window_, reader_, channels, range, name);
    if (RunInProgress(window_.run)) return LoadOutcome::Refused;
    if (whole) return LoadOutcome::Loaded;
    session_.Tell("File Load Warning!", name + "\ncould not be loaded as a whole.");
    return LoadOutcome::Torn;
  }

  ChannelMap ChooseChannels() {
    const int channels = reader_.Layout().channels;
    if (!request_.keepSelection && !options_.LoadSelectedChannels) return AllChannels(channels);
    if (!request_.keepSelection) AskForChannels(request_, reader_.Notes(), channels, options_);
    window_.loadOptions.ChannelSelected = options_.ChannelSelected;
    window_.loadOptions.LoadLocalOffsets = options_.LoadLocalOffsets;
    const ChannelMap map = SelectedChannels(options_.ChannelSelected, channels);
    PackChannels(map, reader_.Notes(), window_);
    return map;
  }

  Session& session_;
  ChartWindow& window_;
  DataFileReader& reader_;
  const LoadRequest& request_;
  LoadOptions options_;
};

}  // namespace

LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file, LoadRange& range,
                     const LoadRequest& request) {
  if (RunInProgress(window.run) || window.save.Loading) return LoadOutcome::Refused;
  const LoadingFlag loading(window.save.Loading);
  const std::string name = file.string();
  ClearChart(window);
  window.view.StatusText = name + " Loading... Please Wait";
  session.host.loop.Yield(std::chrono::milliseconds(0));
  if (RunInProgress(window.run)) return LoadOutcome::Refused;

  DataFileReader reader(session.host.files);
  const OpenResult opened = reader.Open(file);
  if (opened == OpenResult::Ok) return OpenedLoad(session, window, reader, request).Run(file, range);
  TellRefusal(session, opened, name);
  window.view.Title = OwnTitle(window);
  window.view.StatusText.clear();
  return LoadOutcome::Refused;
}

LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file) {
  LoadRange all;
  return LoadData(session, window, file, all);
}

}  // namespace tarvolt
