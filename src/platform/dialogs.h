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
};

}  // namespace tarvolt
