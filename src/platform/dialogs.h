// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace tarvolt {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

/// A question to a person. `defaultAnswer` is what a program without a person answers.
struct Question {
  std::string title;
  std::string text;
  Buttons buttons = Buttons::Ok;
  Answer defaultAnswer = Answer::Ok;
};

/// A file to save, as proposed. The folder and the name come from the caller and may be changed by the person.
struct SaveFileRequest {
  std::string title;
  std::string folder;
  std::string fileName;
  std::string extension;  ///< with the dot, put behind a name that has none
  std::string filter;
};

/// A file to open, as proposed. The filter is in the form of the system's own texts: "words|*.tvd|other|*.*".
struct OpenFileRequest {
  std::string title;
  std::string folder;
  std::string fileName;
  std::string extension;
  std::string filter;
};

/// A line of text asked of a person.
struct TextRequest {
  std::string title;
  std::string prompt;
  std::string text;  ///< what stands in the field at first
};

/// The boxes that a person sees. A program without a screen answers with the default and logs the text.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  /// A message in a window of its own that waits for nobody.
  virtual void ShowMessage(const std::string& title, const std::string& text) = 0;

  /// Waits for an answer. May yield. Never called on a path that must not wait for a person.
  virtual Answer Ask(const Question& question) = 0;

  /// The full name chosen, or nothing when it was cancelled. May yield.
  virtual std::optional<std::string> AskSaveFile(const SaveFileRequest& request) = 0;

  /// The full name of an existing file, or nothing when it was cancelled. May yield.
  virtual std::optional<std::string> AskOpenFile(const OpenFileRequest& request) = 0;

  /// The text entered, or nothing when it was cancelled. May yield.
  virtual std::optional<std::string> AskText(const TextRequest& request) = 0;
};

}  // namespace tarvolt
