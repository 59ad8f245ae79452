// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>
#include <utility>
#include <vector>

#include "forms/options/option_fields.h"

namespace tarvolt {

/// An area around a page, which scrolls where the screen is too small for it.
QScrollArea* Scrolling(QWidget* page, QWidget* parent);

/// Makes a dialog large enough for its pages and their tabs where the screen has the room.
void FitToPages(QWidget& dialog);

/// One page of a dialog of settings: groups of captioned fields, one below the other.
class OptionPage final : public QWidget {
 public:
  /// The item of a list: its caption and the text that is stored for it.
  using Item = std::pair<QString, const char*>;

  /// `fields` outlives it.
  OptionPage(OptionFields& fields, QWidget* parent);

  /// Begins a group; what follows goes into it.
  void Group(const QString& title);

  /// A line of text, or of a number with its unit behind it in the label "Lbl" and the key.
  QLineEdit& Line(const char* key, const QString& caption, const QString& unit = {});
  QCheckBox& Check(const char* key, const QString& caption);
  QComboBox& List(const char* key, const QString& caption, const std::vector<Item>& items);

  /// A list of the sound cards to choose from, as wide as the page has room.
  QComboBox& SoundCards(const std::vector<std::string>& cards);

  /// A line with a button behind it that lets a person choose; `chosen` gives the new text, empty for none.
  void Browse(const char* key, const QString& caption, const char* button,
              std::function<QString(const QString& text)> chosen);

  /// Words across the group.
  QLabel& Words(const QString& text);

  /// A widget of the page's own, across the group.
  void Across(QWidget* widget);

  /// Ends the page.
  void Close() { layout_->addStretch(); }

 private:
  QFormLayout& Form();

  OptionFields& fields_;
  QVBoxLayout* layout_;
  QFormLayout* form_ = nullptr;
};

}  // namespace tarvolt
