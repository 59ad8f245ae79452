// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "model/session.h"

namespace tarvolt {

/// The commands that load and save profiles.
class ProfileCommands {
 public:
  /// `taken` is called when a profile's settings are in force. The session outlives it.
  ProfileCommands(Session& session, std::function<void()> taken);

  /// Puts the settings of a profile in force. False, and reported, when it cannot be read; then nothing has changed.
  bool Load(const std::string& path);

  /// Asks for a profile or a name for one, and does what the command says with it. Yields.
  void mnuLoadProfile();
  void mnuSaveProfile();

  /// One of the four recent profiles, counted from 0; nothing for an empty place.
  void mnuProfile(int place);

 private:
  Session& session_;
  std::function<void()> taken_;
};

}  // namespace tarvolt
