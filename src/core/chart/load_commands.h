// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/chart/chart_commands.h"
#include "core/chart/load_data.h"
#include "core/person.h"

namespace tarvolt {

/// Loads a data file into a window without a run, as LoadData does, and shows the whole of it. False, and reported,
/// when not all of it could be loaded. Yields.
bool LoadAndShow(Session& session, ChartWindow& window, ChartCommands& commands, const std::string& path,
                 const LoadRequest& request = {}, const std::function<bool()>& makeRoom = {});

/// Makes these ticks of the loading panel those that the station begins with.
void StoreLoadOptions(Session& session, const LoadOptions& options, bool showForAllLoads);

/// The commands of one window, the main one or a review window, that load data files. Those of menus ask for the file,
/// and yield.
class LoadCommands {
 public:
  /// All outlive it. `makeRoom` readies the window for the chart of a file that can be read, or refuses, having
  /// reported why.
  LoadCommands(Session& session, ChartWindow& window, ChartCommands& commands, Person& person,
               std::function<bool()> makeRoom = {});

  /// True when a menu's load would not be refused: Stand Alone mode, no run, no other load.
  bool CanLoad() const;

  void MnuLoadDataFile();
  void mnuLoadWithOffsets();
  void mnuLoadWithFileOffsets();
  void mnuLoadSelectedChannels();

  /// One of the five recent files, counted from 0; nothing for an empty place.
  void mnuRecentLoaded(int place);
  void mnuRecentSaved(int place);

  /// A file dropped on the window. Reported when the mode forbids it.
  void DropFile(const std::string& path);

  /// Loads without asking anything, in any mode. False, and reported, when it cannot be loaded as a whole. Yields.
  bool LoadDataFile(const std::string& path);

 private:
  LoadOptions RememberedOptions() const;
  void LoadAsked(const LoadOptions& options, bool showPanel);
  bool LoadWith(const std::string& path, const LoadRequest& request);

  Session& session_;
  ChartWindow& window_;
  ChartCommands& commands_;
  Person& person_;
  std::function<bool()> makeRoom_;
  bool asking_ = false;  ///< a command waits in one of its forms
};

}  // namespace tarvolt
