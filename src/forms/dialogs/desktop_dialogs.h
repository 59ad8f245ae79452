// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "platform/dialogs.h"

namespace tarvolt {

/// The boxes of the desktop program. A message stands in a window of its own and waits for nobody; questions and file
/// dialogs wait, while the recorder's events go on.
class DesktopDialogs final : public Dialogs {
 public:
  DesktopDialogs() = default;
  ~DesktopDialogs() override;

  /// The window over which they are shown; may be null.
  void SetParent(QWidget* parent) { parent_ = parent; }

  /// The program is to end without its person: what waits for one is closed, and from now on every question has its
  /// default answer at once.
  void EndWaiting();

  void ShowMessage(const std::string& title, const std::string& text) override;
  Answer Ask(const Question& question) override;
  std::optional<std::string> AskSaveFile(const SaveFileRequest& request) override;
  std::optional<std::string> AskOpenFile(const OpenFileRequest& request) override;
  std::optional<std::string> AskText(const TextRequest& request) override;

 private:
  QPointer<QWidget> parent_;
  bool ending_ = false;
  QPointer<QWidget> messages_;
};

/// The filter of the system's own texts ("words|*.tvd|other|*.*") as Qt has it.
QString QtFilter(const std::string& filter);

}  // namespace tarvolt
