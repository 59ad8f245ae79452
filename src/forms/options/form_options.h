// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>

#include "core/form_main.h"
#include "forms/options/option_fields.h"
#include "forms/options/source_page.h"

namespace tarvolt {

/// The options dialog. What is refused is said, its page opened and its field given the focus; the dialog stays. It
/// stands over the main window, and the recorder goes on meanwhile.
class FormOptions final : public QDialog {
 public:
  /// Session and form outlive it. Opens on the page that was open last.
  FormOptions(Session& session, FormMain& form, QWidget* parent);

 protected:
  void done(int result) override;

 private:
  void AddPages();
  void AddPage(QWidget* page, const QString& title);
  void AddButtons();
  void ShowSettings();
  void Refresh();
  bool Confirm();
  std::vector<std::string> KeysOfChangedPages() const;
  void ShowProblem(const OptionsProblem& problem);

  Session& session_;
  FormMain& form_;
  OptionFields fields_;
  QTabWidget* tabs_;
  SourcePage* sources_ = nullptr;
  QWidget* timing_ = nullptr;
  QPlainTextEdit* notes_ = nullptr;
  QString shownNotes_;
  QLabel* problem_;
};

}  // namespace tarvolt
