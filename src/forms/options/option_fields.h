// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings.h"
#include "core/station/options_check.h"

namespace tarvolt {

/// The fields of a dialog of settings, each bound to the key of its setting. They are filled and read in one loop, and
/// only what a person has changed is given back: a setting whose text says less than its value stays as it is.
class OptionFields {
 public:
  /// `changed` is called after a person has changed a field.
  explicit OptionFields(std::function<void()> changed);
  OptionFields(const OptionFields&) = delete;
  OptionFields& operator=(const OptionFields&) = delete;

  void Add(const std::string& key, QLineEdit& line);
  void Add(const std::string& key, QCheckBox& box);

  /// The stored texts of a list are the data of its items. One that the list does not have shows as the first item,
  /// and counts as changed.
  void Add(const std::string& key, QComboBox& list);

  /// A field of another form. `widget` takes the focus; who made it calls Touched when a person changes it.
  void Add(const std::string& key, QWidget& widget, std::function<std::string()> read,
           std::function<void(const std::string&)> write);
  void Touched();

  void Show(const Settings& settings);

  /// What was shown last.
  const Settings& Shown() const { return shown_; }

  /// Puts another text into one field as if it had been shown at first; nothing when a person has changed it already.
  void ShowInstead(std::string_view key, const std::string& text);

  /// The fields that no longer have the text they were shown with, in the order in which they were added.
  OptionTexts Changed() const;

  /// What was shown, with what can be read of the fields as they stand.
  Settings Draft() const;

  /// The keys of the fields that lie on a page.
  std::vector<std::string> KeysOn(const QWidget& page) const;

  /// Null for a key without a field.
  QWidget* WidgetOf(std::string_view key) const;

 private:
  struct Field {
    std::string key;
    QWidget* widget;
    std::function<std::string()> read;
    std::function<void(const std::string&)> write;
    std::string shown;
  };

  std::function<void()> changed_;
  std::vector<Field> fields_;
  Settings shown_;
  bool showing_ = false;
};

}  // namespace tarvolt
