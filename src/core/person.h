// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "automation/channel_equations/channel_equations.h"
#include "files/load_channels.h"
#include "model/load_options.h"
#include "model/session.h"

namespace tarvolt {

/// What the form of the equations is opened with.
struct EquationsRequest {
  std::string caption;
  int channels = kChannels;  ///< rows to show
  bool isForIncoming = false;
};

/// Whoever sits in front of a window, as far as boxes and file dialogs do not do. A program without a screen has this
/// one, who settles nothing and declines what is asked.
class Person {
 public:
  virtual ~Person() = default;

  /// True where there is a window that can be drawn.
  virtual bool HasScreen() const { return false; }

  /// Completes the settings of a station at its first use; false when that was cancelled. Not called with ShowMsgBox
  /// off. Comes before there is a window. Yields.
  virtual bool CompleteFirstUse(Session& /*session*/, Settings& /*settings*/) { return true; }

  /// The program is to end at a person's wish: false when other windows still need it. Yields.
  virtual bool LetsEnd() { return true; }

  /// A start was refused for the format of the sound input: opens the chooser and does not wait for it. Not called with
  /// ShowMsgBox off.
  virtual void ChooseSoundFormat() {}

  /// Edits equations in place; false when that was cancelled. Yields.
  virtual bool EditEquations(const EquationsRequest& /*request*/, EquationSet& /*set*/) { return false; }

  /// The loading panel: false when it was cancelled. Yields.
  virtual bool ChooseLoadOptions(Session& /*session*/, LoadOptions& /*options*/) { return false; }

  /// Which channels of a file to load; nothing when that was cancelled. Yields.
  virtual std::optional<ChannelAnswer> ChooseChannels(const ChannelQuestion& /*question*/) { return std::nullopt; }

  /// Draws the window's chart, its view or all of it, into a file. False with the problem in words.
  virtual bool DrawChart(const std::filesystem::path& /*file*/, bool /*fullView*/, std::string& /*problem*/) {
    return false;
  }

  /// Opens the box of the observer log, or brings it to the front.
  virtual void OpenObserverLog() {}
};

}  // namespace tarvolt
