// SPDX-License-Identifier: GPL-3.0-or-later
#include "json.h"

#include <cmath>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

std::string Quoted(std::string_view utf8) {
  constexpr char kHex[] = "0123456789abcdef";
  std::string text = "\"";
  for (const char c : utf8) {
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      text += "\\u00";
      text += kHex[c >> 4];
      text += kHex[c & 15];
    } else {
      text += c;
    }
  }
  return text + '"';
}

}  // namespace

void Json::BeginObject(std::string_view name) {
  Open(name, '{', '}');
}

void Json::BeginArray(std::string_view name) {
  Open(name, '[', ']');
}

void Json::Open(std::string_view name, char opening, char closing) {
  Next(name);
  document_ += opening;
  closings_ += closing;
  first_ = true;
}

void Json::End() {
  const char closing = closings_.back();
  closings_.pop_back();
  if (!first_) document_ += '\n' + std::string(2 * closings_.size(), ' ');
  document_ += closing;
  first_ = false;
  if (closings_.empty()) document_ += '\n';
}

void Json::Next(std::string_view name) {
  if (closings_.empty()) return;
  if (!first_) document_ += ',';
  document_ += '\n' + std::string(2 * closings_.size(), ' ');
  if (!name.empty()) document_ += Quoted(name) + ": ";
  first_ = false;
}

void Json::Text(std::string_view name, std::string_view ansi) {
  Utf8(name, Utf8FromAnsi(ansi));
}

void Json::Utf8(std::string_view name, std::string_view text) {
  Next(name);
  document_ += Quoted(text);
}

void Json::Number(std::string_view name, double value) {
  Next(name);
  document_ += std::isfinite(value) ? NumberText(value) : "null";
}

void Json::Bool(std::string_view name, bool value) {
  Next(name);
  document_ += value ? "true" : "false";
}

}  // namespace tarvolt
