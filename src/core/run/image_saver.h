// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "core/person.h"
#include "model/chart_window.h"
#include "model/run_listener.h"
#include "model/session.h"

namespace tarvolt {

/// Writes pictures of the chart every SaveFTPImagePeriod minutes of a run, for those who put them on the web: the view
/// (FTPImageFile), all of it (FTPImageFileFV), or both, as SaveFTPFullView says (0, 1, 2). Each takes the place of the
/// one before.
class ImageSaver final : public RunListener {
 public:
  /// All outlive it. A `person` with a screen draws; without one nothing is saved, and the log says so at the start.
  ImageSaver(Session& session, ChartWindow& window, Person& person);

  /// Called with the name of each picture written.
  void OnSaved(std::function<void(const std::string& name)> saved) { saved_ = std::move(saved); }

  /// A picture was written by hand.
  void NoteSaved(const std::string& name) {
    if (saved_) saved_(name);
  }

  /// A run begins: AutoStartFTP starts the saver for it.
  void RunStarted();
  void RunEnded() override { startedByRun_ = false; }

  /// On while SaveFTPImage is, or while a run has started it.
  bool IsOn() const { return session_.settings.images.SaveFTPImage || startedByRun_; }

  /// Switches SaveFTPImage, and stores it.
  void mnuSaveFTPImage();

  /// Saves when it is on and the time has come. Called each second.
  void SaveWhenDue();

  /// Saves at once.
  void Save();

 private:
  double Period() const;
  void PlanNext(TimeStamp next);
  void SaveOne(const char* fileKey, const char* newKey, bool fullView);
  std::filesystem::path FileOf(const char* key) const;

  Session& session_;
  ChartWindow& window_;
  Person& person_;
  std::function<void(const std::string&)> saved_;
  bool startedByRun_ = false;
  bool failing_ = false;
  TimeStamp next_ = 0;
};

}  // namespace tarvolt
