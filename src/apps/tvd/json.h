// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// One JSON document put together piece by piece, indented. Texts are given in the recorder's single bytes and become
/// UTF-8.
class Json {
 public:
  /// Inside an object each value has a name; in an array, and for the document itself, it is empty.
  void BeginObject(std::string_view name = {});
  void BeginArray(std::string_view name);
  void End();
  void Text(std::string_view name, std::string_view ansi);
  void Utf8(std::string_view name, std::string_view text);
  void Number(std::string_view name, double value);  ///< null when it is not finite
  void Bool(std::string_view name, bool value);

  /// The document so far.
  const std::string& Document() const { return document_; }

 private:
  void Next(std::string_view name);
  void Open(std::string_view name, char opening, char closing);

  std::string document_;
  std::string closings_;  ///< the brackets still to be closed, innermost last
  bool first_ = true;
};

}  // namespace tarvolt
