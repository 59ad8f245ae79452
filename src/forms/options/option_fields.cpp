// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/option_fields.h"

#include <QToolTip>
#include <algorithm>
#include <utility>

#include "config/settings_table.h"
#include "forms/qt_text.h"
#include "text/path_text.h"

namespace tarvolt {
namespace {

// As it is typed: what is stored would have a "?" in its place.
void LeaveOutWhatCannotBeKept(QLineEdit& line) {
  QString kept;
  for (const char32_t c : line.text().toUcs4()) {
    const QString character = QString::fromUcs4(&c, 1);
    if (HasAnsiForm(character.toStdString())) kept += character;
  }
  if (kept == line.text()) return;
  line.setText(kept);
  QToolTip::showText(line.mapToGlobal(QPoint(0, line.height())),
                     QStringLiteral("Only characters of Windows-1252 (Western Europe) can be kept here."), &line);
}

}  // namespace

OptionFields::OptionFields(std::function<void()> changed) : changed_(std::move(changed)) {}

void OptionFields::Touched() {
  if (!showing_ && changed_) changed_();
}

void OptionFields::Add(const std::string& key, QWidget& widget, std::function<std::string()> read,
                       std::function<void(const std::string&)> write) {
  fields_.push_back({key, &widget, std::move(read), std::move(write), {}});
}

void OptionFields::Add(const std::string& key, QLineEdit& line) {
  line.setObjectName(QStringLiteral("Txt") + ToQString(key));
  QObject::connect(&line, &QLineEdit::textChanged, &line, [this] { Touched(); });
  const bool isPath = IsPathSetting(key);
  if (!isPath) QObject::connect(&line, &QLineEdit::textEdited, &line, [&line] { LeaveOutWhatCannotBeKept(line); });
  Add(
      key, line, [&line, isPath] { return isPath ? PathFromQString(line.text()) : FromQString(line.text()); },
      [&line, isPath](const std::string& text) {
        line.setText(isPath ? PathToQString(text) : ToQString(text));
        line.setCursorPosition(0);
      });
}

void OptionFields::Add(const std::string& key, QCheckBox& box) {
  box.setObjectName(QStringLiteral("Chk") + ToQString(key));
  QObject::connect(&box, &QCheckBox::toggled, &box, [this] { Touched(); });
  Add(
      key, box, [&box] { return box.isChecked() ? "True" : "False"; },
      [&box](const std::string& text) { box.setChecked(text == "True"); });
}

void OptionFields::Add(const std::string& key, QComboBox& list) {
  list.setObjectName(QStringLiteral("Cbo") + ToQString(key));
  QObject::connect(&list, &QComboBox::currentIndexChanged, &list, [this] { Touched(); });
  Add(
      key, list, [&list] { return FromQString(list.currentData().toString()); },
      [&list](const std::string& text) { list.setCurrentIndex(std::max(list.findData(ToQString(text)), 0)); });
}

void OptionFields::Show(const Settings& settings) {
  showing_ = true;
  shown_ = settings;
  for (Field& field : fields_) {
    field.shown = OptionText(settings, field.key);
    field.write(field.shown);
  }
  showing_ = false;
}

void OptionFields::ShowInstead(std::string_view key, const std::string& text) {
  for (Field& field : fields_) {
    if (field.key != key || field.read() != field.shown) continue;
    field.shown = text;
    field.write(text);
  }
}

OptionTexts OptionFields::Changed() const {
  OptionTexts texts;
  for (const Field& field : fields_) {
    std::string text = field.read();
    if (text != field.shown) texts.emplace_back(field.key, std::move(text));
  }
  return texts;
}

Settings OptionFields::Draft() const {
  Settings draft = shown_;
  for (const auto& text : Changed()) ReadOptionTexts({text}, draft);  // one that cannot be read is left out
  return draft;
}

std::vector<std::string> OptionFields::KeysOn(const QWidget& page) const {
  std::vector<std::string> keys;
  for (const Field& field : fields_) {
    if (page.isAncestorOf(field.widget)) keys.push_back(field.key);
  }
  return keys;
}

QWidget* OptionFields::WidgetOf(std::string_view key) const {
  const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) { return field.key == key; });
  return found == fields_.end() ? nullptr : found->widget;
}

}  // namespace tarvolt
