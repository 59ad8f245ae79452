// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/profile.h"
#include "core/run/chart_run.h"
#include "core/run/run_metadata.h"
#include "core/sound/sound_card.h"
#include "core/station/observer_notes.h"
#include "files/auto_title.h"
#include "files/header_info.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

namespace {

std::string SeparatorEnded(const std::filesystem::path& folder) {
  return folder.string() + static_cast<char>(std::filesystem::path::preferred_separator);
}

}  // namespace

ChartRun::ChartRun(Recorder& recorder)
    : recorder_(recorder),
      session_(recorder.session),
      window_(recorder.window),
      run_(recorder.window.run),
      view_(recorder.window.view) {}

void ChartRun::StartChart(const std::string& profile) {
  if (run_.phase != RunPhase::Idle || window_.save.Loading) return;
  run_.phase = RunPhase::Starting;
  if (!RunTheStart(profile)) Abort();
  displayed_.reset();
}

// The steps of a start. False when one of them refused; it has reported why.
bool ChartRun::RunTheStart(const std::string& profile) {
  LoadRunProfile(profile);
  recorder_.triggers.FollowSetting();
  ResetRunState();
  if (!ReadyDataFolders()) return false;
  if (!CheckSources()) return false;
  recorder_.triggers.OpenDevices();
  if (!CheckTiming()) return false;
  if (!MakeRoom() || !IsStillWanted()) return false;
  ShowModeStatus();
  recorder_.commands.view.CloseChartViews();
  if (!recorder_.sources.Prepare() || !IsStillWanted())
    return false;  // a refused start leaves the old chart on display
  ClearForNewRun();
  BuildMetadata();
  CopyOffsets();
  ZeroCounters();
  PrepareChart();
  recorder_.triggers.ResetForRun();
  AddInputMetadata();
  BeginTracking();
  SettleLog(LogStart::First);
  LogChartStarted();
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveRunning);
  recorder_.TimerKeepAlive->SetEnabled(true);
  if (!ConnectSources()) return false;
  TakeNotesAndHeader();
  recorder_.events.LogBegan();
  window_.sound.ClearAccumulators();  // buffers counted while the run was not yet armed have given no reading
  run_.phase = RunPhase::Armed;
  ShowStarted();
  recorder_.commands.look.ShowArrows();
  recorder_.images.RunStarted();
  return true;
}

void ChartRun::LoadRunProfile(const std::string& profile) {
  if (profile.empty()) return;
  session_.Add2SLog("Load Profile: " + std::filesystem::path(profile).filename().string());
  const Outcome loaded =
      LoadProfileFile(session_.host.files, profile, session_.overrides, session_.home.string(), session_.settings);
  if (!loaded) session_.Add2SLog("Could not load the profile " + profile + ": " + loaded.Words());
  ReadNotes(session_);
}

void ChartRun::ResetRunState() {
  ++run_.RunNumber;
  run_.plan = PlanOfRun(session_.settings);
  run_.LastStamp = 0;
  run_.CurrentStamp = 0;
  run_.StepBack = 0;
  run_.DroppedSamples = 0;
  run_.TickBusy = false;
  run_.AbortFlag = false;
  run_.LastMessage.clear();
  run_.AvgCount = 0;
  run_.EffectiveAvg = 1;
  run_.ChannelSum.fill(0);
  run_.ChannelValue.fill(0);
  run_.ChannelMin.fill(kNoMinimum);
  run_.ChannelMax.fill(kNoMaximum);
  run_.ShownChannel = 0;
  view_.ValueLabel.clear();
  view_.LeftStatus.clear();
  view_.Status.Release();
  window_.sound.ClearAccumulators();
  window_.sound.gaps = SoundGaps{};
}

bool ChartRun::ReadyDataFolders() {
  FileSystem& files = session_.host.files;
  if (!files.FolderExists(session_.DataFolder())) CreateDataFolder();
  std::error_code error;
  files.MakeFolders(session_.DataFolder() / "recovery", error);
  if (!error) return true;
  return Refuse("The Data Directory " + session_.DataFolder().string() + " cannot be used: " + error.message());
}

void ChartRun::CreateDataFolder() {
  const std::filesystem::path folder = session_.home / "Data";
  const std::string text = "Your specified Data Directory:\n" + session_.settings.files.DataDirectory +
                           "\nis not found.\nA new Data directory is being created in: \n" + SeparatorEnded(folder);
  session_.Add2SLog("Data Directory " + session_.DataFolder().string() + " is not found; using " + folder.string());
  session_.Tell("Tarvolt", text);
  std::error_code error;
  session_.host.files.MakeFolders(folder, error);
  session_.settings.files.DataDirectory = SeparatorEnded(folder);
  if (session_.IsOverridden("DataDirectory")) return;  // a folder of this run alone
  session_.store.SaveSetting(Section::Settings, "DataDirectory", session_.settings.files.DataDirectory);
}

bool ChartRun::CheckSources() {
  FindSoundCard();
  if (run_.plan.ActiveChannels() == 0) {
    return Refuse("You must select a data source for channel one.\n\nGo to Options / Data Source and select a source.");
  }
  const std::string refusal = recorder_.sources.Choose();
  return refusal.empty() || Refuse(refusal);
}

// A card that is away for a moment is not replaced: opening it refuses the start by its name.
void ChartRun::FindSoundCard() {
  if (!recorder_.soundSource.IsNeeded(run_.plan) || HasSoundCard(session_.settings)) return;
  MatchSoundCard(session_);
  run_.plan.sound = session_.settings.sound;
  run_.plan.card = session_.settings.card;
}

bool ChartRun::MakeRoom() {
  const Result<bool> room = recorder_.unsaved.MakeRoom();
  if (!room) return Refuse(room.Words());
  return *room;
}

// A stop, or Escape, may have come while a step waited.
bool ChartRun::IsStillWanted() {
  if (!run_.AbortFlag && !run_.EndRequested) return true;
  view_.Status.Say("Start Aborted");
  session_.Add2SLog("Start Aborted");
  return false;
}

void ChartRun::ShowModeStatus() {
  switch (window_.Mode) {
    case SessionMode::StandAlone:
      view_.Status.Say("Stand Alone Mode");
      break;
    case SessionMode::Server:
      view_.Status.Say("Server Mode");
      break;
    case SessionMode::Client:
      view_.Status.Say("Client Mode");
      break;
  }
}

// The old chart is put by: it comes back when the start fails.
void ChartRun::ClearForNewRun() {
  displayed_ = PutBy(window_);
  recorder_.commands.look.UnloadMyInfoFile();
  window_.notations = Notations{};
  window_.header.source = DataFileHeader().source;
  window_.notes.clear();
  window_.chart.XAxisLabel = session_.settings.chart.XALabel;
  window_.chart.YAxisLabel = session_.settings.chart.YALabel;
  run_.DataNeedsSave = false;
  window_.save.keeping = LogKeeping{};
  window_.save.LogSaved = false;
  window_.save.SavedAs.clear();
}

void ChartRun::BuildMetadata() {
  BuildRunMetadata(session_, window_);
}

void ChartRun::CopyOffsets() {
  run_.ChannelOffset.fill(0);
  for (int channel = 0; channel < kChannels; ++channel) {
    const double offset = run_.plan.ChannelOffset[channel];
    if (IsUsableOffset(offset)) {
      run_.ChannelOffset[channel] = offset;
    } else {
      session_.Add2SLog("The offset of channel " + NumberText(std::int64_t{channel + 1}) + ", " + NumberText(offset) +
                        ", is no number that can be an offset: 0 is used.");
    }
  }
}

void ChartRun::ZeroCounters() {
  run_.Dcount = 0;
  run_.LastDcount = 0;
  run_.TotalSamples = 0;
  run_.StoreStart = 0;
  run_.LetGo = MinMax{};
  window_.header.start = 0;
  window_.header.end = 0;
}

bool ChartRun::CheckTiming() {
  if (run_.plan.vAvg < 1) return Refuse("Must have greater than zero samples to average.");
  if (!(run_.plan.SampleRate >= 10)) return Refuse("Sample Rate must be 10 milliseconds or greater.");
  if (!(session_.settings.timing.ChartWidth >= 1)) return Refuse("Chart Width must be 1 or more seconds.");
  recorder_.LoTime1->SetInterval(RoundToInt32(run_.plan.SampleRate));
  return true;
}

void ChartRun::PrepareChart() {
  StripChart& chart = window_.chart;
  run_.ChannelCount = run_.plan.ActiveChannels();
  if (run_.ChannelCount == 1) chart.ChannelVisible[0] = true;
  chart.ClearData();
  chart.SetChannelCount(run_.ChannelCount);
  chart.ChannelPen = StripChart::kOwnPens;
  for (int channel = 0; channel < kChannels; ++channel) {
    chart.ChannelName[channel] = run_.plan.ChannelLabel[channel];
    window_.channelLabels[channel] = run_.plan.ChannelLabel[channel];
  }
  recorder_.commands.look.TakeLook();
  recorder_.commands.look.ShowChartLegend();
  chart.TimeMarker.reset();
  chart.CursorChannel = -1;
  chart.AutoScale = session_.settings.chart.AutoScale;
  SetRange(chart, {chart.XAxisMin, chart.XAxisMax, 0, chart.AutoScale ? 1 : session_.settings.chart.ChartYaxisMax});
}

void ChartRun::AddInputMetadata() {
  recorder_.sources.DescribeInputs(window_.metadata);
  AddTimingMetadata(run_.plan, recorder_.soundSource.ActualPeriod(), window_.metadata);
  recorder_.sources.DescribeLinks(window_.metadata);
}

void ChartRun::BeginTracking() {
  run_.OffsetsChanged = false;
  window_.chart.Mode = ChartMode::Tracking;
}

void ChartRun::LogChartStarted() {
  session_.Add2SLog("Chart Started  " + FormatDate(recorder_.CalcTime(), "YYMMDDHHnnSS"));
  if (run_.ChartIsLMST && run_.ChartIsUT) session_.Add2SLog("UT and sidereal time are both on: the log is sidereal.");
  window_.chart.AutoScroll = true;
  run_.UpdateCount = 0;
}

void ChartRun::TakeNotesAndHeader() {
  window_.save.PendingNotes = session_.notes;
  getStaticHeaderInfo(session_, window_, GetModifiedNotes(session_, window_, window_.notes).size());
}

bool ChartRun::ConnectSources() {
  const auto rows = run_.plan.Dsrc;
  if (!recorder_.sources.Connect()) return false;
  if (run_.plan.Dsrc != rows) FollowChangedRows();
  recorder_.LoTime1->SetEnabled(run_.plan.pacer == Pacer::Timer);
  return true;
}

// The data source has declared another number of channels than the table holds.
void ChartRun::FollowChangedRows() {
  recorder_.commands.look.ShowChartLegend();
  BuildMetadata();
  AddInputMetadata();
}

void ChartRun::ShowStarted() {
  view_.Status.Say("Started " + recorder_.LocalTimeText() + (run_.ChartIsLMST ? " LMST" : run_.ChartIsUT ? " UT" : ""));
  run_.StartStamp = recorder_.CalcTime();
  view_.Title = " New Chart Started: " + FormatDate(run_.StartStamp, "YYYY/MM/DD hh:nn:ss");
  DoAutoTitle(session_, window_);
}

bool ChartRun::Refuse(const std::string& text) {
  session_.LogAndTell("Tarvolt", text);
  return false;
}

void ChartRun::Abort() {
  recorder_.sources.Close();
  recorder_.triggers.RunEnded();
  recorder_.LoTime1->SetEnabled(false);
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveIdle);
  if (displayed_) {
    PutBack(std::move(*displayed_), window_);
    recorder_.commands.look.ShowChartLegend();
  }
  run_.phase = RunPhase::Idle;
  window_.chart.Mode = ChartMode::Browsing;
  if (run_.ScheduleRunning) run_.CancelSchedule = true;
}

}  // namespace tarvolt
