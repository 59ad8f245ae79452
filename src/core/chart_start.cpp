#include <algorithm>

#include "automation/next_restart.h"
#include "config/profile.h"
#include "core/chart_run.h"
#include "core/observer_entries.h"
#include "core/observer_notes.h"
#include "core/run_metadata.h"
#include "core/sound_card.h"
#include "files/auto_title.h"
#include "files/header_info.h"
#include "files/naming.h"
#include "files/saving.h"
#include "model/channel_table.h"
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
  if (run_.ChartRunning || run_.Starting || run_.Stopping || window_.save.Loading) return;
  run_.Starting = true;
  backupBegun_ = false;
  if (!RunTheStart(profile)) Abort();
  run_.Starting = false;
}

// The thirty steps of a start. False when one of them refused; it has told why.
bool ChartRun::RunTheStart(const std::string& profile) {
  LoadRunProfile(profile);
  ResetRunState();
  if (!ReadyDataFolders()) return false;
  if (!CheckSources()) return false;
  recorder_.triggers.OpenDevices();
  window_.notes.clear();
  if (!AskToSave() && !recorder_.saveFailed) return false;
  if (!SetUnsavedAside()) return Refuse("The last chart waits for room on the disk, and no more can wait with it.");
  ShowModeStatus();
  ClearForNewRun();
  BuildMetadata();
  CopyOffsets();
  DetectZone();
  DisableCommands();
  ZeroCounters();
  if (!CheckTiming()) return false;
  PrepareChart();
  recorder_.triggers.ResetForRun();
  if (!SetUpSound()) return false;
  AddTimingMetadata();
  if (!EnableStopControls()) return false;
  LogChartStarted();
  SetTimeOrigin(true);
  PlanNextRestart();
  TakeNotesAndHeader();
  recorder_.backup.InitLocalBU();
  backupBegun_ = true;
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveRunning);
  recorder_.TimerKeepAlive->SetEnabled(true);
  if (!ConnectSources()) return false;
  ShowStarted();
  run_.ChartRunning = true;
  window_.sound.ClearAccumulators();  // buffers counted while the run was not yet armed have given no reading
  run_.chartState = ChartState::Armed;
  recorder_.commands.ShowArrows();
  recorder_.images.RunStarted();
  return true;
}

void ChartRun::LoadRunProfile(const std::string& profile) {
  if (profile.empty()) return;
  session_.Add2SLog("Load Profile: " + std::filesystem::path(profile).filename().string());
  std::string problem;
  if (!LoadProfileFile(session_.host.files, profile, session_.overrides, session_.home.string(), session_.settings,
                       problem)) {
    session_.Add2SLog("Could not load the profile " + profile + ": " + problem);
  }
  recorder_.triggers.FollowSetting();
  ReadNotes(session_);
}

void ChartRun::ResetRunState() {
  // A sidereal run ignores it: its stamps are no time of a day.
  run_.TimeRefZero = session_.settings.TimeRefZero && !session_.settings.LogLMST;
  run_.Dsrc = session_.settings.Dsrc;
  run_.Detection = session_.settings.Detection;
  run_.TimerType = session_.settings.TimerType;
  run_.SampleRate = session_.settings.SampleRate;
  run_.SCTadjust = session_.settings.SCTadjust;
  run_.vAvg = session_.settings.vAvg;
  run_.UDSpush = session_.settings.UDSpush;
  run_.ApplyToIncoming = session_.settings.ApplyToIncoming;
  run_.Equations = EquationsOf(session_.settings);
  run_.LastStamp = 0;
  run_.CurrentStamp = 0;
  run_.StepBack = 0;
  run_.DroppedSamples = 0;
  run_.chartState = ChartState::Idle;
  run_.TickBusy = false;
  run_.AbortFlag = false;
  run_.LastMessage.clear();
  run_.MaxingOut = false;
  run_.AvgCount = 0;
  run_.ChannelSum.fill(0);
  run_.ChannelValue.fill(0);
  run_.ChannelMin.fill(kNoMinimum);
  run_.ChannelMax.fill(kNoMaximum);
  run_.ShownChannel = 0;
  view_.ValueLabel.clear();
  view_.LeftStatus.clear();
  view_.StatusHold = kStatusFree;
  window_.sound.ClearAccumulators();
  window_.sound.gaps = SoundGaps{};
  recorder_.sources = SourcesInUse{};
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
  const std::string text = "Your specified Data Directory:\n" + session_.settings.DataDirectory +
                           "\nis not found.\nA new Data directory is being created in: \n" + SeparatorEnded(folder);
  session_.Add2SLog("Data Directory " + session_.DataFolder().string() + " is not found; using " + folder.string());
  session_.Tell("Tarvolt", text);
  std::error_code error;
  session_.host.files.MakeFolders(folder, error);
  session_.settings.DataDirectory = SeparatorEnded(folder);
  if (session_.IsOverridden("DataDirectory")) return;  // a folder of this run alone
  session_.store.SaveSetting(Section::Settings, "DataDirectory", session_.settings.DataDirectory);
}

bool ChartRun::CheckSources() {
  const Settings& settings = session_.settings;
  recorder_.sources = FindSourcesInUse(settings);
  // A card that is away for a moment is not replaced: opening it refuses the start by its name.
  if (NeedsSound() && !HasSoundCard(session_.settings)) MatchSoundCard(session_);
  const std::string refusal = RefuseAtStart(settings, HasSoundCard(settings));
  if (!refusal.empty()) return Refuse(refusal);
  for (int channel = 0; channel < ActiveChannels(settings); ++channel) {
    if (!CanRead(settings.Dsrc[channel])) {
      return Refuse("Channel " + NumberText(std::int64_t{channel + 1}) + " is set to \"" +
                    SourceName(settings.Dsrc[channel]) +
                    "\", which this version cannot read. Change to another data source under Options / Data Source.");
    }
  }
  return true;
}

bool ChartRun::CanRead(DataSourceId source) const {
  return IsUds(source) || ReadsSound(source) || IsEquation(source);
}

bool ChartRun::SetUnsavedAside() {
  if (!recorder_.saveFailed) return true;
  const std::filesystem::path name = NameDataFile(session_, window_, NameKind::Data, true);
  recorder_.saveFailed = name != kBadFile && !recorder_.pending.SetAside(window_, name);
  return !recorder_.saveFailed;
}

bool ChartRun::AskToSave() {
  if (!run_.DataNeedsSave || !HasData() || !session_.settings.ShowMsgBox) return true;
  const Question question{"Data Not Saved", "The last chart was not saved.\nDo you want to save it now?",
                          Buttons::YesNo, Answer::No};
  if (session_.host.dialogs.Ask(question) != Answer::Yes) return true;
  window_.save.UserAskedSave = true;
  const SaveOutcome outcome = CheckForSave(session_, window_, true);
  window_.save.UserAskedSave = false;
  recorder_.saveFailed = outcome == SaveOutcome::Failed;
  return outcome == SaveOutcome::Saved;
}

void ChartRun::ShowModeStatus() {
  switch (window_.Mode) {
    case SessionMode::StandAlone:
      view_.StatusText = "Stand Alone Mode";
      break;
    case SessionMode::Server:
      view_.StatusText = "Server Mode";
      break;
    case SessionMode::Client:
      view_.StatusText = "Client Mode";
      break;
  }
}

void ChartRun::ClearForNewRun() {
  recorder_.commands.UnloadMyInfoFile();
  window_.notations = Notations{};
  window_.header.source = DataFileHeader().source;
  run_.TimeRefZeroFile = run_.TimeRefZero;
  window_.chart.XAxisLabel = session_.settings.XALabel;
  window_.chart.YAxisLabel = session_.settings.YALabel;
  run_.DataNeedsSave = false;
  recorder_.saveFailed = false;
  window_.save.LoadedFromFile = false;
  window_.save.SavedAs.clear();
  view_.SaveCommands = false;
}

void ChartRun::BuildMetadata() {
  BuildRunMetadata(session_, window_);
}

void ChartRun::CopyOffsets() {
  run_.ChannelOffset.fill(0);
  if (session_.settings.UseOffsets) run_.ChannelOffset = session_.settings.DefaultChannelOffset;
}

void ChartRun::DetectZone() {
  if (session_.settings.DetectTZ) session_.settings.TZ = DetectTimeZoneHours(session_.host.clock);
}

void ChartRun::DisableCommands() {
  recorder_.commands.CloseChartViews();
  view_.LoadCommands = false;
  view_.InfoCommands = false;
  view_.ToolCommands = false;
  view_.ScheduleCommand = false;
}

void ChartRun::ZeroCounters() {
  run_.Dcount = 0;
  run_.LastDcount = 0;
  run_.TotalSamples = 0;
  run_.StoreStart = 0;
  window_.header.start = 0;
  window_.header.end = 0;
  TakeTimeBase();
  TakeKeepingOfLog();
  run_.EffectiveAvg = 1;
  window_.chart.SetCapacity(session_.settings.MaxArrayCount);
  run_.ChartStopped = false;
}

bool ChartRun::CheckTiming() {
  if (run_.vAvg < 1) return Refuse("Must have greater than zero samples to average.");
  if (!(run_.SampleRate >= 10)) return Refuse("Sample Rate must be 10 milliseconds or greater.");
  if (run_.TimerType == kSoundTimer && !PushReplacesSound() && !HasSoundCard(session_.settings))
    return Refuse("The sound card is set as the timing method but no sound card is available.");
  recorder_.LoTime1->SetInterval(RoundToInt32(run_.SampleRate));
  return true;
}

void ChartRun::PrepareChart() {
  StripChart& chart = window_.chart;
  run_.ChannelCount = ActiveChannels(session_.settings);
  if (run_.ChannelCount == 1) chart.ChannelVisible[0] = true;
  chart.ClearData();
  chart.SetChannelCount(run_.ChannelCount);
  chart.ChannelPen = StripChart::kOwnPens;
  for (int channel = 0; channel < kChannels; ++channel) {
    chart.ChannelName[channel] = session_.settings.ChannelLabel[channel];
    window_.channelLabels[channel] = session_.settings.ChannelLabel[channel];
  }
  recorder_.commands.TakeLook();
  recorder_.commands.ShowChartLegend();
  chart.TimeMarker.reset();
  chart.CursorChannel = -1;
  chart.AutoScale = session_.settings.AutoScale;
  SetRange(chart, {chart.XAxisMin, chart.XAxisMax, 0, chart.AutoScale ? 1 : session_.settings.ChartYaxisMax});
}

void ChartRun::AddTimingMetadata() {
  TimingFacts facts;
  facts.udsInUse = recorder_.sources.UDSInUse;
  facts.soundPaces = run_.TimerType == kSoundTimer;
  const bool uneven = facts.soundPaces && run_.SampleRate > 1000 && !soundTiming_.divided;
  if (uneven) facts.actualPeriod = (run_.EffectiveAvg - run_.vAvg + 1) * soundTiming_.bufMs;
  tarvolt::AddTimingMetadata(session_, facts, window_);
}

bool ChartRun::EnableStopControls() {
  run_.OffsetsChanged = false;
  window_.chart.Mode = ChartMode::Tracking;
  if (!(session_.settings.ChartWidth >= 1)) return Refuse("Chart Width must be 1 or more seconds.");
  view_.ModeMenus = false;
  return true;
}

void ChartRun::LogChartStarted() {
  session_.Add2SLog("Chart Started  " + FormatDate(recorder_.CalcTime(), "YYMMDDHHnnSS"));
  view_.StartMenuCaption = "Stop Chart";
  window_.chart.AutoScroll = true;
  recorder_.commands.CheckScrollEnabled();
  run_.UpdateCount = 0;
  EnterChartStarted(recorder_);
}

// A sidereal run counts its sidereal clock from a moment in UT, so its offset is that of UT whatever the base of
// other runs is.
void ChartRun::TakeClockOffset() {
  const Settings& settings = session_.settings;
  run_.time.tz = settings.TZ;
  run_.time.utOffset = settings.LogUsingUT || settings.LogLMST ? -settings.TZ / 24 : 0;
  session_.log.SetUTOffset(run_.time.utOffset);
}

void ChartRun::TakeTimeBase(double ago) {
  const Settings& settings = session_.settings;
  TimeBase& time = run_.time;
  TakeClockOffset();
  time.logLMST = settings.LogLMST;
  time.firstStamp = CalcTimeNotSidereal(session_.host.clock, time) - ago * kMillisecond;
  time.startLMST = settings.LogLMST ? CalcLMST(time.firstStamp, settings.UserLng) : 0;
  if (window_.save.LoadedFromFile || window_.save.Loading) return;  // a loaded chart keeps the base of its file
  run_.ChartIsLMST = settings.LogLMST;
  run_.ChartIsUT = settings.LogUsingUT;
}

// How a log is kept is settled when it begins: samples are only let go of where the log has them elsewhere.
void ChartRun::TakeKeepingOfLog() {
  run_.MiniServer = session_.settings.MiniServer;
  run_.DiskBackUp = session_.settings.DiskBackUp;
}

// A source that stamps its sets may be ahead of the clock: a log is not over before it has begun. `rebaseAxis`: with
// TimeRefZero the x axis of a first log starts at midnight; that of a later log keeps the time of day (meant), though
// its samples count from midnight as well. Where sound is the clock a later log begins where the one before it ended.
void ChartRun::SetTimeOrigin(bool rebaseAxis) {
  TakeTimeBase(rebaseAxis ? 0 : SoundWaiting());
  const TimeStamp first = run_.time.firstStamp;
  TimeStamp left = first;
  if (run_.ChartIsLMST) {
    left = run_.time.startLMST;
  } else if (run_.TimeRefZero) {
    left = WholeDay(first);
  }
  const TimeStamp axisStart = run_.TimeRefZero && !run_.ChartIsLMST && !rebaseAxis ? first : left;
  window_.chart.XAxisMin = axisStart;
  window_.chart.XAxisMax = axisStart + session_.settings.ChartWidth / kSecondsPerDay;
  const bool stampsAreTimes = !run_.ChartIsLMST && !run_.TimeRefZero;
  run_.ChartEndTime = (stampsAreTimes ? std::max(left, run_.CurrentStamp) : left) + session_.settings.MaxDuration;
}

void ChartRun::PlanNextRestart() {
  run_.NextRestart = GetNextRestart(session_.host.clock, session_.settings, run_);
  session_.store.SaveSetting(Section::Settings, "ChartNextRestart", NumberText(run_.NextRestart));
}

void ChartRun::TakeNotesAndHeader() {
  window_.save.PendingNotes = session_.notes;
  getStaticHeaderInfo(session_, window_, GetModifiedNotes(session_, window_, window_.notes).size());
}

bool ChartRun::ConnectSources() {
  if (recorder_.sources.UDSInUse && !ConnectUds()) return false;
  recorder_.LoTime1->SetEnabled(run_.TimerType != kSoundTimer && !PushReplacesSound());
  return true;
}

bool ChartRun::ConnectUds() {
  session_.Add2SLog("Using UDS: " + session_.settings.UDSexe);
  session_.Add2SLog(std::string("UDS Data: ") + (session_.settings.UDSpush ? "Pushed" : "Polled"));
  if (!recorder_.uds.UDSConnect()) return Refuse("UDS Connection Canceled - Chart Canceled");
  FollowChannelCount();
  return true;
}

// The data source may have declared another number of channels than the table holds: the backup's header must say so.
void ChartRun::FollowChannelCount() {
  if (run_.ChannelCount == ActiveChannels(session_.settings)) return;
  TakeNotesAndHeader();
  recorder_.backup.InitLocalBU();
  recorder_.commands.ShowChartLegend();
}

void ChartRun::ShowStarted() {
  view_.StartCaption = "&Stop Chart";
  view_.cmdStart = true;
  view_.OffsetCommand = true;
  view_.StatusText = "Started " + recorder_.LocalTimeText() +
                     (run_.ChartIsLMST ? " LMST"
                      : run_.ChartIsUT ? " UT"
                                       : "");
  run_.StartStamp = recorder_.CalcTime();
  view_.Title = " New Chart Started: " + FormatDate(run_.StartStamp, "YYYY/MM/DD hh:nn:ss");
  DoAutoTitle(session_, window_);
}

bool ChartRun::Refuse(const std::string& text) {
  session_.Add2SLog(text);
  session_.Tell("Tarvolt", text);
  return false;
}

void ChartRun::Abort() {
  recorder_.uds.Close();
  recorder_.sound.Close();
  recorder_.triggers.RunEnded();
  recorder_.LoTime1->SetEnabled(false);
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveIdle);
  run_.chartState = ChartState::Idle;
  run_.ChartRunning = false;
  run_.ChartStopped = true;
  if (backupBegun_) {
    window_.save.BackupActive = false;
    session_.store.SaveSetting(Section::Settings, "LocalRun", "OK");
  }
  window_.chart.Mode = ChartMode::Browsing;
  view_.cmdStart = true;
  view_.StartCaption = "&Start Chart";
  view_.StartMenuCaption = "Start New Chart";
  view_.ModeMenus = true;
  view_.LoadCommands = true;
  view_.ScheduleCommand = true;
  if (run_.ScheduleRunning) run_.CancelSchedule = true;
}

}  // namespace tarvolt
