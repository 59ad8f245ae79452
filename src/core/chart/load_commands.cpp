// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/load_commands.h"

#include <filesystem>
#include <utility>

#include "core/chart/command_states.h"
#include "core/run/average_rate.h"
#include "model/scoped_flag.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// The data file that a person chooses, its folder being remembered for the next time.
std::optional<std::string> AskForDataFile(Session& session) {
  std::string folder = session.store.GetSetting(Section::Settings, "LastLoadDir");
  if (folder.empty()) folder = session.DataFolder().string();
  const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
  if (folder.back() != separator) folder += separator;
  const std::optional<std::string> file = session.host.dialogs.AskOpenFile(
      {"Load Data File", folder, "*.tvd", ".tvd", "Tarvolt data (*.tvd)|*.tvd|dat file (*.dat)|*.dat|Any (*.*)|*.*"});
  if (file) {
    session.store.SaveSetting(Section::Settings, "LastLoadDir", std::filesystem::path(*file).parent_path().string());
  }
  return file;
}

void ShowRate(ChartWindow& window) {
  if (!window.chart.Samples().TimesRise()) return;  // first and last stamp say nothing of the samples between
  const AverageRate rate = CalcAvgRate(window.chart, window.run.TotalSamples, window.run.ChartIsLMST);
  if (!(rate.samplesPerSecond > 0)) return;
  window.view.LeftStatus = rate.samplesPerSecond < 1
                               ? "Data Sec/Sample " + FormatNumber(rate.secondsPerSample, "##0.0##")
                               : "Data Samp/Sec " + FormatNumber(rate.samplesPerSecond, "##0.0##");
}

}  // namespace

bool LoadAndShow(Session& session, ChartWindow& window, ChartCommands& commands, const std::string& path,
                 const LoadRequest& request, const std::function<bool()>& makeRoom) {
  LoadRange all;
  const LoadOutcome outcome = LoadData(session, window, path, all, request, makeRoom);
  if (outcome == LoadOutcome::Refused) return false;
  ShowRate(window);
  commands.view.cmdFullView();
  commands.look.ShowChartLegend();
  commands.look.ShowArrows();
  commands.view.CloseChartViews();
  return outcome == LoadOutcome::Loaded;
}

void StoreLoadOptions(Session& session, const LoadOptions& options, bool showForAllLoads) {
  session.settings.files.ShowLoadOptions = showForAllLoads;
  session.settings.files.FLO_LocalOffsets = options.LoadLocalOffsets;
  session.settings.files.FLO_FileOffsets = options.LoadFileOffsets;
  const auto store = [&session](const char* key, bool value) {
    session.store.SaveSetting(Section::Settings, key, value ? "True" : "False");
  };
  session.store.BeginBatch();
  store("ShowLoadOptions", showForAllLoads);
  store("FLO_LocalOffsets", options.LoadLocalOffsets);
  store("FLO_FileOffsets", options.LoadFileOffsets);
  session.store.EndBatch();
}

LoadCommands::LoadCommands(Session& session, ChartWindow& window, ChartCommands& commands, Person& person,
                           std::function<bool()> makeRoom)
    : session_(session), window_(window), commands_(commands), person_(person), makeRoom_(std::move(makeRoom)) {}

bool LoadCommands::CanLoad() const {
  return StatesOf(window_).LoadCommands && !asking_;
}

// The ticks that a person stored stand in the panel; without the panel nobody would see them, and the load is a plain
// one.
LoadOptions LoadCommands::RememberedOptions() const {
  LoadOptions options;
  options.LoadLocalOffsets = session_.settings.files.FLO_LocalOffsets;
  options.LoadFileOffsets = session_.settings.files.FLO_FileOffsets;
  return options;
}

void LoadCommands::MnuLoadDataFile() {
  const bool showPanel = session_.settings.files.ShowLoadOptions;
  LoadAsked(showPanel ? RememberedOptions() : LoadOptions(), showPanel);
}

void LoadCommands::mnuLoadWithOffsets() {
  LoadOptions options = RememberedOptions();
  options.LoadLocalOffsets = true;
  LoadAsked(options, true);
}

void LoadCommands::mnuLoadWithFileOffsets() {
  LoadOptions options = RememberedOptions();
  options.LoadFileOffsets = true;
  LoadAsked(options, true);
}

void LoadCommands::mnuLoadSelectedChannels() {
  const bool showPanel = session_.settings.files.ShowLoadOptions;
  LoadOptions options = showPanel ? RememberedOptions() : LoadOptions();
  options.LoadSelectedChannels = true;
  LoadAsked(options, showPanel);
}

void LoadCommands::mnuRecentLoaded(int place) {
  if (place < 0 || place >= static_cast<int>(session_.recent.loaded.size()) || !CanLoad()) return;
  const std::string path = session_.recent.loaded[place];
  if (!path.empty()) LoadDataFile(path);
}

void LoadCommands::mnuRecentSaved(int place) {
  if (place < 0 || place >= static_cast<int>(session_.recent.saved.size()) || !CanLoad()) return;
  const std::string path = session_.recent.saved[place];
  if (!path.empty()) LoadDataFile(path);
}

void LoadCommands::DropFile(const std::string& path) {
  if (window_.Mode != SessionMode::StandAlone) {
    session_.Tell("Tarvolt", "Must be in Stand Alone Mode or using review window to load file.");
    return;
  }
  if (CanLoad()) LoadDataFile(path);
}

bool LoadCommands::LoadDataFile(const std::string& path) {
  if (window_.save.Loading || asking_) return false;
  commands_.look.UnloadMyInfoFile();
  window_.loadOptions = LoadOptions();
  return LoadWith(path, {});
}

// A view of the file information that was open comes back when the values are no longer those of the file.
void LoadCommands::LoadAsked(const LoadOptions& options, bool showPanel) {
  if (!CanLoad()) return;
  const bool infoWasShown = window_.view.InfoShown;
  commands_.look.UnloadMyInfoFile();
  window_.loadOptions = options;
  std::optional<std::string> file;
  {
    const ScopedFlag asking(asking_);
    if (!showPanel || person_.ChooseLoadOptions(session_, window_.loadOptions)) file = AskForDataFile(session_);
  }
  LoadRequest request;
  request.askChannels = [this](const ChannelQuestion& question) { return person_.ChooseChannels(question); };
  const bool loaded = file && LoadWith(*file, request);
  const bool withOffsets = window_.loadOptions.LoadLocalOffsets || window_.loadOptions.LoadFileOffsets;
  if (loaded && withOffsets && infoWasShown) commands_.look.mnuDataFileInfo();
  window_.loadOptions = LoadOptions();
}

bool LoadCommands::LoadWith(const std::string& path, const LoadRequest& request) {
  return LoadAndShow(session_, window_, commands_, path, request, makeRoom_);
}

}  // namespace tarvolt
