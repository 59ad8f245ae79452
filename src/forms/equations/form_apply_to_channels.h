// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <array>

#include "core/person.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tarvolt {

/// The equations of the channels: a tick and a text each, equation files, and a trial of one equation.
class FormApplytoChannels final : public QDialog {
 public:
  /// The session and the window outlive it.
  FormApplytoChannels(Session& session, const ChartWindow& window, const EquationsRequest& request,
                      const EquationSet& set, QWidget* parent);

  /// The rows as they stand; channels without a row as they came.
  EquationSet Equations() const;

 private:
  void MakeMenus();
  void MakeRow(QGridLayout& grid, int channel);
  void MakeButtons();
  void Show(const EquationSet& set);
  void cmdLoadDefaults();
  void CmdSave();
  void LoadFile();
  void SaveFile();
  void mnuTest();
  std::string Folder() const;
  void RememberFolder(const std::string& file);
  int RowInHand() const;

  Session& session_;
  const ChartWindow& window_;
  int rows_;
  bool isForIncoming_;
  EquationSet set_;
  std::array<QCheckBox*, kChannels> ticks_{};
  std::array<QLineEdit*, kChannels> texts_{};
  QLabel* file_;
  QPlainTextEdit* result_;
};

}  // namespace tarvolt
