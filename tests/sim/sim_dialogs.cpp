// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_dialogs.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace tarvolt {

namespace {

bool HasButton(Buttons buttons, Answer answer) {
  switch (buttons) {
    case Buttons::Ok:
      return answer == Answer::Ok;
    case Buttons::OkCancel:
      return answer == Answer::Ok || answer == Answer::Cancel;
    case Buttons::YesNo:
      return answer == Answer::Yes || answer == Answer::No;
    case Buttons::YesNoCancel:
      return answer != Answer::Ok;
  }
  return false;
}

std::optional<std::string> TakeNext(std::deque<std::optional<std::string>>& script) {
  if (script.empty()) return std::nullopt;
  std::optional<std::string> next = std::move(script.front());
  script.pop_front();
  return next;
}

std::string ProposedName(const SaveFileRequest& request) {
  std::filesystem::path name = std::filesystem::path(request.folder) / request.fileName;
  if (!name.has_extension()) name += request.extension;
  return name.string();
}

}  // namespace

void SimDialogs::ShowMessage(const std::string& title, const std::string& text) {
  boxes_.push_back({Kind::Message, title, text});
}

Answer SimDialogs::Ask(const Question& question) {
  Note(Kind::Question, question.title, question.text);
  if (answers_.empty()) return question.defaultAnswer;
  const Answer answer = answers_.front();
  answers_.pop_front();
  if (!HasButton(question.buttons, answer)) {
    throw std::logic_error("SimDialogs: no such button in the box: " + question.text);
  }
  return answer;
}

std::optional<std::string> SimDialogs::AskSaveFile(const SaveFileRequest& request) {
  const std::string proposed = ProposedName(request);
  Note(Kind::SaveFile, request.title, proposed);
  if (fileNames_.empty()) return proposed;
  std::optional<std::string> chosen = std::move(fileNames_.front());
  fileNames_.pop_front();
  return chosen;
}

std::optional<std::string> SimDialogs::AskOpenFile(const OpenFileRequest& request) {
  Note(Kind::OpenFile, request.title, request.folder);
  return TakeNext(fileNames_);
}

std::optional<std::string> SimDialogs::AskText(const TextRequest& request) {
  Note(Kind::Text, request.title, request.prompt);
  return TakeNext(texts_);
}

bool SimDialogs::HasShown(std::string_view words) const {
  return std::any_of(boxes_.begin(), boxes_.end(), [words](const Box& box) {
    return box.title.find(words) != std::string::npos || box.text.find(words) != std::string::npos;
  });
}

int SimDialogs::Questions() const {
  return static_cast<int>(
      std::count_if(boxes_.begin(), boxes_.end(), [](const Box& box) { return box.kind != Kind::Message; }));
}

void SimDialogs::Note(Kind kind, const std::string& title, const std::string& text) {
  const Box box{kind, title, text};
  boxes_.push_back(box);
  if (const auto handler = whileAsking) handler(box);
}

}  // namespace tarvolt
