// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "forms/options/option_page.h"
#include "model/session.h"

namespace tarvolt {

/// What a new station needs to know before it starts: who and where it is, and where its data go.
class FormFirstUse final : public QDialog {
 public:
  /// Shows `settings`, and changes them when it is accepted. Both outlive it.
  FormFirstUse(Session& session, Settings& settings);

 private:
  void AddFirstSource(OptionPage& page);
  void Confirm();

  Session& session_;
  Settings& settings_;
  OptionFields fields_;
};

/// Lets a person complete the settings; false, and logged, when that was cancelled. Waits for the person.
bool RunFirstUse(Session& session, Settings& settings);

}  // namespace tarvolt
