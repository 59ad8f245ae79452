// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "platform/dialogs.h"

namespace tarvolt {

/// The boxes of a program without a screen: each is one line to a log, each question has its default answer.
class HeadlessDialogs final : public Dialogs {
 public:
  using LineSink = std::function<void(const std::string& line)>;

  /// `sink` receives the recorder's own single-byte text, without line ends.
  explicit HeadlessDialogs(LineSink sink);

  void ShowMessage(const std::string& title, const std::string& text) override;
  Answer Ask(const Question& question) override;

  /// The file as it was proposed.
  std::optional<std::string> AskSaveFile(const SaveFileRequest& request) override;

  /// Cancelled: nobody is there to choose.
  std::optional<std::string> AskOpenFile(const OpenFileRequest& request) override;
  std::optional<std::string> AskText(const TextRequest& request) override;

 private:
  LineSink sink_;
};

}  // namespace tarvolt
