// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"

namespace tarvolt {

/// A person at a simulated screen: notes every box, and answers from a script. Without one a question gets its
/// default answer, and a file to save the proposed name.
class SimDialogs final : public Dialogs {
 public:
  enum class Kind { Message, Question, SaveFile, OpenFile, Text };
  struct Box {
    Kind kind = Kind::Message;
    std::string title;
    std::string text;  ///< for a file to save the proposed full name
  };

  void ShowMessage(const std::string& title, const std::string& text) override;

  /// std::logic_error when the scripted answer has no button in the box.
  Answer Ask(const Question& question) override;
  std::optional<std::string> AskSaveFile(const SaveFileRequest& request) override;
  std::optional<std::string> AskOpenFile(const OpenFileRequest& request) override;
  std::optional<std::string> AskText(const TextRequest& request) override;

  /// Scripts the answer to the next question that has none yet.
  void AnswerNext(Answer answer) { answers_.push_back(answer); }

  /// Scripts what is chosen at the next file to save or to open that has no answer yet; nothing is Cancel. A file to
  /// open without a script is cancelled.
  void ChooseFileNext(std::optional<std::string> fileName) { fileNames_.push_back(std::move(fileName)); }

  /// Scripts what is entered at the next text that has no answer yet; nothing is Cancel, as it is without a script.
  void EnterNext(std::optional<std::string> text) { texts_.push_back(std::move(text)); }

  /// Called while a box waits for its answer: here a test lets time pass, or does what a person might.
  std::function<void(const Box&)> whileAsking;

  /// All boxes so far, in order.
  const std::vector<Box>& Boxes() const { return boxes_; }

  /// True when a box had `words` in its title or text.
  bool HasShown(std::string_view words) const;

  /// Boxes that waited for a person.
  int Questions() const;

 private:
  void Note(Kind kind, const std::string& title, const std::string& text);

  std::vector<Box> boxes_;
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> fileNames_;
  std::deque<std::optional<std::string>> texts_;
};

}  // namespace tarvolt
