// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QTabWidget>
#include <array>

#include "core/form_main.h"
#include "forms/triggers/trigger_page.h"

namespace tarvolt {

/// The dialog of the triggers: a tab each, and below them the channels whose triggers are tested. A run goes on
/// meanwhile, with the triggers it had until CmdDone.
class FormTriggers final : public QDialog {
 public:
  /// Session and form outlive it.
  FormTriggers(Session& session, FormMain& form, QWidget* parent);

 private:
  void AddPages();
  void AddChannels();
  void AddButtons();
  void ShowTriggers(const TriggerDefinitions& triggers);
  void ShowChannels();
  bool ReadPages(TriggerDefinitions& triggers);
  TriggerChannels ReadChannels() const;
  void cmdLoadTriggers();
  void cmdSaveTriggers();
  void CmdDone();
  void ShowProblem(const QString& text);

  Session& session_;
  TriggerRun& triggers_;
  QTabWidget* tabs_;
  std::array<TriggerPage*, kTriggerSlots> pages_{};
  std::array<QCheckBox*, kChannels> enabled_{};
  QLabel* problem_;
};

}  // namespace tarvolt
