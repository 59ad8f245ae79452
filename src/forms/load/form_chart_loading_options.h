// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QDialog>

#include "model/load_options.h"
#include "model/session.h"

namespace tarvolt {

/// The panel that says how a file is loaded, for the window that owns the options. OK applies its ticks to that load
/// alone; Save makes them those that the station begins with, and leaves the panel open.
class FormChartLoadingOptions final : public QDialog {
 public:
  FormChartLoadingOptions(Session& session, const LoadOptions& options, QWidget* parent);

  /// Puts the ticks into the owner's options.
  void ApplyToOwner(LoadOptions& options) const;

 private:
  QCheckBox* AddBox(const char* name, const QString& caption, bool ticked);
  void Save();

  Session& session_;
  QCheckBox* localOffsets_;
  QCheckBox* fileOffsets_;
  QCheckBox* selectedChannels_;
  QCheckBox* show_;
};

}  // namespace tarvolt
