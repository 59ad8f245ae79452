// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "core/chart/equation_commands.h"
#include "core/chart/load_commands.h"
#include "core/chart/recovered_charts.h"
#include "core/person.h"
#include "core/run/chart_run.h"
#include "core/run/keep_alive.h"
#include "core/run/recorder.h"
#include "core/run/sample_pipeline.h"
#include "core/sound/sound_clock.h"
#include "core/sound/sound_desk.h"
#include "core/station/options_command.h"
#include "core/station/profile_commands.h"
#include "core/station/shut_down.h"

namespace tarvolt {

/// One recording window put together: its state, its run, its timers and its commands.
class FormMain final : public RunControl {
 public:
  /// Idle, with nothing loaded yet. Both outlive it.
  FormMain(Session& session, Person& person);
  ~FormMain() override;

  /// Everything between the making of the window and its readiness, and then the command line. Never stops for a bad
  /// setting. False only when a person has cancelled the first use: the program is then to end without Form_Unload. May
  /// yield.
  bool Form_Load(const std::string& commandLine);

  /// Stops a run, saves, and leaves the marks of a clean end. May yield.
  void Form_Unload();

  void StartChart(const std::string& profile) override;
  void StopChart() override;
  void MaxedOut(MaxedOutMode mode) override;
  void ProcessCmd(std::string_view text) override;

  /// Escape: ends every wait.
  void Escape();

  /// Asks the program to end: ends every wait and the run. The caller then leaves its loop and calls Form_Unload.
  void RequestEnd();

  /// A person wants the program to end: RequestEnd, unless the person takes it back when asked. Yields.
  void mnuExit();

  /// True while samples wait for a disk that refused them.
  bool HasUnsavedSamples() const { return recorder_.unsaved.Any(); }

  /// Puts the window into a mode. Refused during a run.
  void EnterMode(SessionMode mode);

  const ChartWindow& Window() const { return recorder_.window; }

  /// What a person does with the chart, its offsets and the average of a channel.
  ChartCommands& Chart() { return recorder_.commands; }
  ChannelOffsets& Offsets() { return recorder_.offsets; }
  ChannelAverage& Average() { return recorder_.average; }

  /// The triggers of the channels, and the way to hand them the outputs they drive.
  TriggerRun& Triggers() { return recorder_.triggers; }

  /// The events of the run, for a listener that the program adds.
  RunEvents& Events() { return recorder_.events; }

  /// The saver of pictures.
  ImageSaver& Images() { return recorder_.images; }

  /// The window's observer log, for the box that holds it.
  ObserverLog& OLog() { return recorder_.window.olog; }

  /// The commands of loading, of equations, of profiles and of the options, and what there is to see of the sound.
  LoadCommands& Loads() { return loads_; }
  EquationCommands& Equations() { return equations_; }
  ProfileCommands& Profiles() { return profiles_; }
  OptionsCommand& Options() { return options_; }
  SoundDesk& Sound() { return sound_; }

  /// The charts that lie in the recovery folder.
  RecoveredCharts& Recovered() { return recovered_; }

  /// The one button: starts a chart, or stops the one that runs. Yields.
  void cmdStart();

  /// Saves the chart; during a run the log so far, and a new log begins. Yields.
  void mnuSave();

  /// Saves the stretch in view under a name that a person chooses. Yields.
  void cmdSaveView();

 private:
  bool MakeRoomForLoad();

  Session& session_;
  Recorder recorder_;
  ChartRun chartRun_;
  SamplePipeline pipeline_;
  SoundClock soundClock_;
  KeepAlive keepAlive_;
  ShutDown shutDown_;
  OptionsCommand options_;
  ProfileCommands profiles_;
  LoadCommands loads_;
  EquationCommands equations_;
  SoundDesk sound_;
  RecoveredCharts recovered_;
};

}  // namespace tarvolt
