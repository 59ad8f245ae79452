// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/person.h"

namespace tarvolt {

class MainWindow;

/// The person in front of the main window: what is asked is asked in dialogs over it.
class DesktopPerson final : public Person {
 public:
  /// `attended` is false for a program that was started to record by itself, and must not wait at its first use.
  explicit DesktopPerson(bool attended = true) : attended_(attended) {}

  /// The window, while there is one; null before and after.
  void SitAt(MainWindow* window) { window_ = window; }

  bool HasScreen() const override { return window_ != nullptr; }
  bool CompleteFirstUse(Session& session, Settings& settings) override;
  bool LetsEnd() override;
  void ChooseSoundFormat() override;
  bool EditEquations(const EquationsRequest& request, EquationSet& set) override;
  bool ChooseLoadOptions(Session& session, LoadOptions& options) override;
  std::optional<ChannelAnswer> ChooseChannels(const ChannelQuestion& question) override;
  bool DrawChart(const std::filesystem::path& file, bool fullView, std::string& problem) override;
  void OpenObserverLog() override;

 private:
  bool attended_;
  MainWindow* window_ = nullptr;
};

}  // namespace tarvolt
