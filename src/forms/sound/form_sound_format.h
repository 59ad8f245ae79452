// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <functional>
#include <string>

#include "core/sound/sound_card.h"

namespace tarvolt {

/// The formats that a sound input has, of which one is chosen for the runs to come.
class FormSoundFormat final : public QDialog {
 public:
  /// Takes the row of a format as sWavFormat names it, -1 for an input's own one.
  using Chosen = std::function<void(int row)>;

  /// Asks the input for its formats at once, and shows `row` as the one in use. `session` outlives it. It deletes
  /// itself when it is closed.
  FormSoundFormat(const Session& session, const std::string& card, int row, Chosen chosen, QWidget* parent);

 private:
  void FillList(const Session& session, const std::string& card, int row);
  void AddLine(const SoundFormatLine& line, int row);
  QListWidgetItem* Selected() const;
  void Choose();

  Chosen chosen_;
  QListWidget* list_;
  QLabel* words_;
};

}  // namespace tarvolt
