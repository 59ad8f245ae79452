#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/apply_function.h"
#include "core/chart_run.h"
#include "core/command_line.h"
#include "core/keep_alive.h"
#include "core/load_commands.h"
#include "core/options_check.h"
#include "core/recorder.h"
#include "core/sample_pipeline.h"
#include "core/sound_card.h"
#include "core/sound_clock.h"

namespace tarvolt {

/// One recording window put together: its state, its run and its timers, and what a program's start and end do with
/// them.
class FormMain final : public RunControl {
 public:
  /// Idle, with nothing loaded yet. `session` outlives it.
  explicit FormMain(Session& session);
  ~FormMain() override;

  /// A person who completes the settings of a station at its first use: changes them in place, false when that was
  /// cancelled. May yield.
  using FirstUse = std::function<bool(Settings&)>;

  /// Says that somebody is there for a first use. Without one, or with ShowMsgBox off, it settles itself. To be called
  /// before Form_Load.
  void OnFirstUse(FirstUse person) { firstUse_ = std::move(person); }

  /// Who shows the chooser of sound formats when a start was refused for the one in use, without waiting for it. Not
  /// called with ShowMsgBox off.
  void OnChooseSoundFormat(std::function<void()> person) { recorder_.chooseSoundFormat = std::move(person); }

  /// Everything between the making of the window and its readiness: settings, recovery, priority and the command line.
  /// Never stops for a bad setting. False only when a person has cancelled the first use: the program is then to end
  /// without Form_Unload. May yield.
  bool Form_Load(const std::string& commandLine);

  /// Stops a run, saves, and leaves the marks of a clean end. May yield.
  void Form_Unload();

  void StartChart(const std::string& profile) override;
  void StopChart() override;
  void MaxedOut(MaxedOutMode mode) override;
  void ProcessCmd(std::string_view text) override;

  /// ProcessCmd that tells: false when a word was not understood.
  bool RunCommandLine(std::string_view text);

  /// Escape: ends every wait.
  void Escape();

  /// Asks the program to end: ends every wait and the run. The caller then leaves its loop and calls Form_Unload.
  void RequestEnd();

  /// True once the program was asked to end.
  bool EndRequested() const { return recorder_.window.run.EndRequested; }

  /// True while samples wait for a disk that refused them.
  bool HasUnsavedSamples() const { return recorder_.saveFailed || !recorder_.pending.Empty(); }

  /// Puts the window into a mode. Refused during a run.
  void EnterMode(SessionMode mode);

  /// Puts the settings of a profile in force. False, and told, when it cannot be read; then nothing has changed.
  bool LoadProfile(const std::string& path);

  /// Opens a data file. False, and told, when it cannot be loaded as a whole. Yields.
  bool LoadDataFile(const std::string& path) { return loads_.LoadDataFile(path); }

  const ChartWindow& Window() const { return recorder_.window; }

  /// What a person does with the chart, its offsets and the average of a channel.
  ChartCommands& Chart() { return recorder_.commands; }
  ChannelOffsets& Offsets() { return recorder_.offsets; }
  ChannelAverage& Average() { return recorder_.average; }

  /// The triggers of the channels, and the way to hand them the outputs they drive.
  TriggerRun& Triggers() { return recorder_.triggers; }

  /// The saver of pictures, which a program with a window gives something to draw with.
  ImageSaver& Images() { return recorder_.images; }

  /// The window's observer log, for the box that holds it.
  ObserverLog& OLog() { return recorder_.window.olog; }

  /// The commands that load data files.
  LoadCommands& Loads() { return loads_; }

  /// An image file of the chart was written.
  void NoteImageSaved(const std::filesystem::path& file);

  /// True when the station has a sound input to look at.
  bool HasSoundInput() const { return HasSoundCard(session_.settings); }

  /// Takes a sound input that has come since a station without one began, unless a chart is running.
  void LookForSoundCard();

  /// The levels of the sound input now.
  SoundLevels Levels() const { return LevelsNow(recorder_.window, recorder_.sound); }

  /// Where a level meter asks for the highest samples.
  LevelFeed& HighestSamples() { return recorder_.window.sound.levels; }

  /// Frames a second of the sound input, as it was opened last.
  double SoundRate() const { return recorder_.sound.Format().samplesPerSecond; }

  /// Where a spectrum window asks for samples.
  SpectrumFeed& Spectrum() { return recorder_.window.sound.spectrum; }

  /// Shows a text in the status line for as long as such messages stand.
  void ShowStatus(const std::string& text);

  // Commands of menus and buttons (form_main_commands.cpp). Those with a question or a file dialog yield.

  /// The one button: starts a chart, or stops the one that runs.
  void cmdStart();

  /// Saves the chart; during a run the log so far, and a new log begins.
  void mnuSave();
  void cmdSaveView();

  /// Asks for a profile or a name for one, and does what the command says with it.
  void mnuLoadProfile();
  void mnuSaveProfile();

  /// One of the four recent profiles, counted from 0.
  void mnuProfile(int place);

  /// Real Time is asked about first.
  void mnuPriority(PriorityClass priority);

  /// Who edits equations. Without one the commands of equations do nothing.
  void OnEditEquations(EditEquations person) { editEquations_ = std::move(person); }

  /// The equations that work on the samples of the runs to come: edits them, and switches ApplyToIncoming on when one
  /// is ticked, off when none is. Does nothing during a run.
  void mnuChannelEquations();

  /// Applies equations to the chart on display, which may get new channels for them, and saves it as a new file. Tells
  /// what it is refused for, and when the rules of saving leave the changed chart unsaved.
  void mnuApplyFunction();

  /// True while no run is on and none is being started, ended or loaded.
  bool ChartIsAtRest() const;
  bool CanApplyFunction() const;

  /// After the options dialog or a profile: what may change at once changes. A run, and a chart that may still be
  /// saved, keep the base of their time.
  void UpdateAfterOptionsChange();

  // The options dialog (options_command.cpp).

  /// Lays the texts of the dialog over the settings, checks them, puts them in force and stores them. What an override
  /// of this run hides stays as it is stored. Gives what they are refused for; then nothing has changed. `notes`, when
  /// given, becomes the observer's notes. Yields while it asks about a data folder that is not there.
  std::optional<OptionsProblem> ConfirmOptions(const OptionTexts& texts, const std::optional<std::string>& notes);

 private:
  // Steps of the loading (start_up.cpp).
  void StoreProgramIdentity();
  void SettleFirstUse();
  void LoadSettings();
  void LoadTriggers();
  void FindSoundCard();
  void CheckZone();
  void ApplyPriority();
  void CheckIdentity();
  bool ShowLocalName();
  void ReadNotes();
  void NameSessionLog();
  void AlertAboutBackups();
  void ReadRecentLists();
  void RunStep(void (FormMain::*step)());
  void WriteLoadError(const std::string& text);

  bool RunCommand(const SlashCommand& command);
  std::optional<OptionsProblem> TakeAnotherCard(const OptionTexts& texts, Settings& draft) const;
  void ApplyOptions(const Settings& draft);
  bool MakeRoomForLoad();

  // Steps of mnuApplyFunction (equation_commands.cpp).
  std::optional<int> AskForNewChannels();
  std::string WhyChartMustStay() const;
  bool MayGoOn() const;
  void SaveChanged();
  void RefuseEquations(const std::string& text);

  Session& session_;
  Recorder recorder_;
  ChartRun chartRun_;
  SamplePipeline pipeline_;
  SoundClock soundClock_;
  KeepAlive keepAlive_;
  FirstUse firstUse_;
  EditEquations editEquations_;
  bool firstUseCancelled_ = false;
  LoadCommands loads_;
};

}  // namespace tarvolt
