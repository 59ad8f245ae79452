// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "files/backup.h"
#include "files/naming.h"
#include "files/raw_file.h"
#include "model/chart_window.h"
#include "model/session.h"
#include "sim/sim_host.h"
#include "timebase/time_base.h"

namespace tarvolt {

/// A window with a chart on a simulated machine; no run goes on unless a test acts as one.
class Desk {
 public:
  explicit Desk(int channels = 2, std::uint64_t seed = 1) : host(seed), session(host.Record(), "/station") {
    std::error_code error;
    host.disk.MakeFolders("/station/Data", error);
    LoadRegistrySettings(session.store, session.overrides, "/station", session.settings);
    session.settings.files.DataDirectory = "/station/Data/";
    session.settings.files.PromptBeforeSaving = false;
    session.settings.program.ShowMsgBox = false;
    session.settings.files.OrganizeByMonth = false;
    session.settings.files.OrganizeByDay = false;
    session.settings.station.LocalName = "Home";
    session.settings.station.Author = "A. Observer";
    window.header.localName = "Home                ";
    window.run.ChannelCount = channels;
    window.chart.SetChannelCount(channels);
  }

  /// A log with the settings as they are now.
  void SettleLog() {
    window.run.plan = PlanOfRun(session.settings);
    window.run.log = PlanOfLog(session.settings, window.run.plan, window.Mode == SessionMode::Client);
    SettleKeeping(window.run.log, window.chart.ChannelCount(), window.save.keeping);
  }

  /// The same, with its backup when one is wanted.
  void BeginLog(LocalBackup& backup) {
    SettleLog();
    backup.InitLocalBU();
  }

  /// The value that Record gives a channel of the n-th sample of the run.
  static double Value(int channel, int n) { return 100.0 * channel + n + 0.25; }

  /// Stores the next `count` samples, ten seconds apart.
  void Record(int count) {
    StripChart& chart = window.chart;
    for (int i = 0; i < count; ++i, ++recorded) {
      const std::int32_t index = chart.AddTime(Stamp(recorded));
      for (int channel = 0; channel < chart.ChannelCount(); ++channel)
        chart.SetValue(channel, index, Value(channel, recorded));
    }
    window.run.CurrentStamp = Stamp(recorded - 1);
    window.run.EndStamp = window.run.CurrentStamp;
  }

  /// Stamp of the n-th recorded sample: from 2 January 2010, 12:00 on.
  static TimeStamp Stamp(int n) { return 40180.5 + n * 10.0 / 86400; }

  std::string Bytes(const std::filesystem::path& path) { return host.disk.Contents(path).value_or("(no such file)"); }
  bool Exists(const std::filesystem::path& path) { return host.disk.Contents(path).has_value(); }
  bool Logged(std::string_view words) const { return session.log.Text().find(words) != std::string::npos; }
  std::string Marker(std::string_view key = "LocalRun") const {
    return session.store.GetSetting(Section::Settings, key);
  }

  SimHost host;
  Session session;
  ChartWindow window;
  int recorded = 0;
};

/// A desk whose samples go into a backup one by one.
struct BackedUpDesk : Desk {
  explicit BackedUpDesk(std::uint64_t seed = 1) : Desk(2, seed), backup(session, window) {
    session.settings.files.DiskBackUp = true;
  }

  void BeginLog() { Desk::BeginLog(backup); }

  void RecordAndBackUp(int count) {
    for (int i = 0; i < count; ++i) {
      Record(1);
      backup.LocalBackUp();
    }
  }

  /// As a mini chart does in the middle of its log.
  void ClearStore() {
    window.chart.ClearData();
    backup.StoreWasCleared();
  }

  LocalBackup backup;
};

/// The samples of Desk::Record as a file has them.
inline std::string Expected(int first, int last, bool stamps = true, bool integers = false, int channels = 2) {
  RawFile raw;
  for (int i = first; i <= last; ++i) {
    if (stamps) raw.Add(Desk::Stamp(i));
    for (int channel = 0; channel < channels; ++channel) {
      if (integers) {
        raw.Add(static_cast<std::int16_t>(100 * channel + i));
      } else {
        raw.Add(Desk::Value(channel, i));
      }
    }
  }
  return raw.Bytes();
}

}  // namespace tarvolt
