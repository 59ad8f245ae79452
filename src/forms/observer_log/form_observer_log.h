// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QMainWindow>
#include <QPushButton>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "core/form_main.h"
#include "forms/observer_log/log_text_box.h"
#include "forms/observer_log/olog_hooks.h"
#include "logs/observer_macros.h"
#include "logs/rich_text.h"

namespace tarvolt {

/// The observer's notebook: a rich text box that takes the program's entries at its caret while it is open. Closed by
/// its own close it deletes itself.
class FormObserverLog final : public QMainWindow {
 public:
  /// All outlive it. States when the log was opened.
  FormObserverLog(Session& session, FormMain& form, OLogHooks hooks);
  ~FormObserverLog() override;

  /// An observer writes less in years: what comes by itself or from a file ends here.
  static constexpr std::size_t kMostCharacters = 4'000'000;

  /// Adds a text at the caret, on a line of its own, and moves the caret to the end. With `stamped` the stamp line goes
  /// in front.
  void AddEntry(const std::string& text, bool stamped);

  /// Inserts the stamp line at the caret.
  void DoTimeStamp();

  /// True when closing would lose text.
  bool HasUnsaved() const;

  /// Asks whether to save what is unsaved, with ShowMsgBox, and saves. False when the log must stay. Yields.
  bool MayClose();

  /// Saves what is unsaved to the log's own file without a question, under a free name when it has none yet. False,
  /// and reported once, when that fails.
  bool SaveUnasked();

  /// Closes without the save question.
  void KillMe();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  using Command = std::function<void()>;

  // Menus and settings (olog_menus.cpp).
  void MakeMenus();
  void MakeFileMenu();
  void MakeFormatMenu();
  void MakeEntriesMenu();
  void MakeMacroMenu();
  QAction* Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key, Command command);
  void AddSetting(QMenu& menu, const char* name, const QString& caption, const char* key, bool on);
  void AskDateFormat();
  void AskDefaultLogDirectory();
  void AskStoreLogWithObservation();

  // Files (olog_files.cpp).
  void Load();
  void LoadFile(const std::string& path);
  bool Save();
  bool SaveAs();
  bool HasTextToSave() const;  ///< told when there is none
  bool SaveTold(const std::filesystem::path& file);
  bool WriteTo(const std::filesystem::path& file, std::string& problem);
  bool MayReplaceText();
  bool AskToSave(const char* title, const std::string& text);
  std::filesystem::path ProposedName() const;
  std::string Ending() const;
  void AddFileReference();
  void AppendFile();
  std::optional<std::string> AskOpen(const char* title, const char* filter);
  void AutoSave();
  void TellProblem(const std::string& text);

  // Macros.
  QWidget* MakeMacroButtons();
  void ShowMacros();
  void ClickMacro(int macro);
  void ConfigureMacros(int macro);
  void LoadMacros();
  void SaveMacros();

  void SnapShot();
  void OpenWordAt(const QString& line, int column);
  void ShowName();
  std::string Name() const { return file_.filename().string(); }

  Session& session_;
  FormMain& form_;
  OLogHooks hooks_;
  LogTextBox* text_;
  std::array<QPushButton*, kOMacros> buttons_{};
  OMacroSet macros_;
  int markedMacros_ = 0;
  std::filesystem::path file_;  ///< without folder until the log has been saved or loaded
  bool hasFile_ = false;
  bool full_ = false;
  bool saveFailing_ = false;
  bool asking_ = false;
  bool closing_ = false;
  QAction* storeWithObservation_ = nullptr;
  std::unique_ptr<Timer> autoSave_;
};

}  // namespace tarvolt
