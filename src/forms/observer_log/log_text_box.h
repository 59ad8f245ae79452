// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextEdit>
#include <functional>

namespace tarvolt {

/// The rich text box of the observer log: takes pictures from the clipboard, and reports double clicks.
class LogTextBox final : public QTextEdit {
 public:
  /// Given the line under the pointer and the column in it.
  using DoubleClick = std::function<void(const QString& line, int column)>;

  explicit LogTextBox(QWidget* parent);

  void OnDoubleClick(DoubleClick doubleClick) { doubleClick_ = std::move(doubleClick); }

  /// The last two characters of the text, line ends as CR LF.
  QString Tail() const;

  /// Puts a text in at the caret by way of the clipboard, whose contents are lost by that (meant).
  void PasteText(const QString& text);

 protected:
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  DoubleClick doubleClick_;
};

}  // namespace tarvolt
