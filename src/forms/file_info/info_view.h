#pragma once

#include <QPointer>
#include <QWidget>

#include "core/chart_commands.h"
#include "forms/file_info/form_file_info.h"

namespace tarvolt {

/// Keeps the view of a window's file information open or closed as the window's state says.
class InfoView final : public QObject {
 public:
  /// All outlive it. The view stands over `parent`.
  InfoView(const ChartWindow& window, ChartCommands& commands, QWidget* parent);
  ~InfoView() override;

  /// mnuDataFileInfo: opens the view, or shows an open one again with what the chart tells now.
  void Open();

  void Refresh();

 private:
  const ChartWindow& window_;
  ChartCommands& commands_;
  QWidget* parent_;
  QPointer<FormFileInfo> form_;
};

}  // namespace tarvolt
