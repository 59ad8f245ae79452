// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPlainTextEdit>
#include <QWidget>

#include "model/session.h"

namespace tarvolt {

/// The session log as it grows, newest entry in view, with "Clear" and "Save".
class FormSessionLog final : public QWidget {
 public:
  /// Lives as long as the session, which it listens to.
  explicit FormSessionLog(Session& session, QWidget* parent = nullptr);

  /// The title says whether the log goes to a file.
  void RefreshTitle();

  /// Asks for a name and writes the text shown; says so in the log. Yields.
  void Save();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  Session& session_;
  QPlainTextEdit* text_;
};

}  // namespace tarvolt
