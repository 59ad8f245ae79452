// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/chart/command_states.h"
#include "core/form_main.h"
#include "sim/sim_host.h"
#include "sim/uds_peer.h"

namespace tarvolt {

/// One sample as it stands in a file or in the store.
struct Sample {
  TimeStamp stamp = 0;
  std::vector<double> values;
};

/// The whole recorder on a simulated machine, told about as an observer would: settings, a data source, time that
/// passes, crashes, and the files that are there afterwards. Its home is "/station", its only source one of two
/// channels.
class Station {
 public:
  explicit Station(std::uint64_t seed = 1, const WallTime& ut = {2010, 1, 2, 12, 0, 0, 0});
  ~Station();

  /// Sets a setting as on the command line, for this start of the program and those that follow.
  Station& Set(std::string_view key, std::string_view value);
  Station& Set(std::string_view key, const char* value) { return Set(key, std::string_view(value)); }
  Station& Set(std::string_view key, bool value) { return Set(key, value ? "True" : "False"); }
  Station& Set(std::string_view key, int value);

  /// Who sits in front of the program from its next start on; outlives it.
  Station& For(Person& person) {
    person_ = &person;
    return *this;
  }

  /// Starts the program; the first call of any of the following does so too.
  Station& Boot(const std::string& commandLine = "");
  Station& StartChart();
  Station& StopChart();
  Station& RunFor(std::chrono::milliseconds span);

  /// Runs until the source has sent so many sets since the station was made.
  Station& RunForSets(std::int64_t sets);

  /// Ends the program in order.
  Station& ShutDown();

  /// The program dies without a word; the machine is ready for the next Boot.
  Station& Kill();

  /// Runs a part of the program's life that may end in a crash of the disk; true when it did, and the machine is ready
  /// again.
  template <typename Life>
  bool Crashes(Life life) {
    if (!host.RunsUntilCrash(life)) return false;
    form_.reset();
    session_.reset();
    host.Reboot();
    return true;
  }

  FormMain& Form() { return *form_; }
  Session& TheSession() { return *session_; }
  const RunState& Run() const { return form_->Window().run; }
  const StripChart& Chart() const { return form_->Window().chart; }
  const WindowState& View() const { return form_->Window().view; }
  CommandStates States() const { return StatesOf(form_->Window()); }
  bool Running() const { return form_ && form_->Window().run.ChartRunning(); }

  /// Data files outside the recovery folder, without the backup, in order of their names.
  std::vector<std::string> FilesSaved() const;
  std::vector<std::string> FilesRescued() const;

  /// The samples of one file, only those that stand whole in it.
  std::vector<Sample> SamplesIn(const std::string& file);

  /// The samples in the store.
  std::vector<Sample> Stored() const;

  /// The values of channel 1 in the only file that was saved, or rescued; nothing when there is none or more than one.
  std::vector<double> OnlySaved() { return OnlyOf(FilesSaved()); }
  std::vector<double> OnlyRescued() { return OnlyOf(FilesRescued()); }

  /// Whether these words stand in the bytes of the saved file that is last by its name.
  bool LastFileHolds(std::string_view words) const;

  /// The values of channel 1 in all saved files, and then in the store.
  std::vector<double> FirstChannelInFilesAndStore();
  std::vector<double> FirstChannelIn(const std::string& file);

  /// The session log of the program that runs, or of the one that ended last.
  std::string Log() const;
  bool Logged(std::string_view words) const { return LogLines(words) > 0; }
  int LogLines(std::string_view words) const;

  /// A setting as it is stored.
  std::string Setting(std::string_view key) { return session_->store.GetSetting(Section::Settings, key); }

  SimHost host;
  UdsPeer uds;

 private:
  std::vector<std::string> DataFiles(bool rescued) const;
  std::vector<double> OnlyOf(const std::vector<std::string>& files) {
    return files.size() == 1 ? FirstChannelIn(files[0]) : std::vector<double>();
  }

  SettingOverrides overrides_;
  Person nobody_;
  Person* person_ = &nobody_;
  std::unique_ptr<Session> session_;
  std::unique_ptr<FormMain> form_;
  std::string lastLog_;
};

/// 0, 1, 2 … count-1.
std::vector<double> Ramp(int count);

}  // namespace tarvolt
