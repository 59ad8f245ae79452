#pragma once

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <functional>
#include <string>

#include "core/sound_card.h"

namespace tarvolt {

/// The formats that a sound input has, of which one is chosen for the runs to come.
class FormSoundFormat final : public QDialog {
 public:
  /// Asks the input for its formats at once. `session` outlives it; `chosen` is called behind a choice. It deletes
  /// itself when it is closed.
  FormSoundFormat(Session& session, const std::string& card, std::function<void()> chosen, QWidget* parent);

 private:
  void FillList(const std::string& card);
  void AddLine(const SoundFormatLine& line);
  void Choose();

  Session& session_;
  std::function<void()> chosen_;
  QListWidget* list_;
  QLabel* words_;
};

}  // namespace tarvolt
