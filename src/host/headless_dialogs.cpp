// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/headless_dialogs.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "text/ansi.h"

namespace tarvolt {
namespace {

std::string OnOneLine(const std::string& title, const std::string& text) {
  std::string line = title.empty() || text.empty() ? title + text : title + ": " + text;
  line = ReplaceAll(line, "\r\n", " ");
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  return Trim(line);
}

std::string NameOf(Answer answer) {
  switch (answer) {
    case Answer::Ok:
      return "OK";
    case Answer::Cancel:
      return "Cancel";
    case Answer::Yes:
      return "Yes";
    case Answer::No:
      return "No";
  }
  return {};
}

}  // namespace

HeadlessDialogs::HeadlessDialogs(LineSink sink) : sink_(std::move(sink)) {}

void HeadlessDialogs::ShowMessage(const std::string& title, const std::string& text) {
  sink_(OnOneLine(title, text));
}

Answer HeadlessDialogs::Ask(const Question& question) {
  sink_(OnOneLine(question.title, question.text) + " [" + NameOf(question.defaultAnswer) + "]");
  return question.defaultAnswer;
}

std::optional<std::string> HeadlessDialogs::AskSaveFile(const SaveFileRequest& request) {
  std::filesystem::path file = std::filesystem::path(request.folder) / request.fileName;
  if (!file.has_extension()) file += request.extension;
  sink_(OnOneLine(request.title, file.native()));
  return file.native();
}

std::optional<std::string> HeadlessDialogs::AskOpenFile(const OpenFileRequest& request) {
  sink_(OnOneLine(request.title, "") + " [Cancel]");
  return std::nullopt;
}

std::optional<std::string> HeadlessDialogs::AskText(const TextRequest& request) {
  sink_(OnOneLine(request.title, request.prompt) + " [Cancel]");
  return std::nullopt;
}

}  // namespace tarvolt
