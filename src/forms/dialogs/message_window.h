// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPlainTextEdit>
#include <QWidget>

namespace tarvolt {

/// Messages, one below the other, in a window that waits for nobody. Holds the last ones only.
class MessageWindow final : public QWidget {
 public:
  explicit MessageWindow(QWidget* parent);
  void Add(const QString& title, const QString& text);

 private:
  QPlainTextEdit* text_;
};

}  // namespace tarvolt
