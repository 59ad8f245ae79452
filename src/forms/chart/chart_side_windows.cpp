// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/chart_side_windows.h"

namespace tarvolt {

ChartSideWindows::ChartSideWindows(const Session& session, const ChartWindow& window, ChartCommands& commands,
                                   FormChartView::Apply applyAll, QWidget* owner)
    : session_(session), window_(window), commands_(commands), applyAll_(std::move(applyAll)), owner_(owner) {}

// They are hidden and not destroyed: one of them may be waiting in a dialog of its own.
void ChartSideWindows::Refresh() {
  if (window_.view.ChartViewShown != chartViewShown_) ShowChartView(window_.view.ChartViewShown);
  const bool askedAgain = window_.view.InfoOpenings != infoOpenings_;
  if (window_.view.InfoShown != infoShown_ || askedAgain) ShowInfo(window_.view.InfoShown);
}

void ChartSideWindows::ShowChartView(bool shown) {
  chartViewShown_ = shown;
  if (!chartView_) {
    const auto apply = [this](const ChartViewEntry& entry) { return ApplyChartView(entry, window_, commands_.view); };
    chartView_ = new FormChartView(window_, apply, applyAll_, owner_);
    chartView_->OnClosed([this] { commands_.view.HideChartView(); });
  }
  if (shown) chartView_->Fill(DescribeView(window_, session_.settings.timing.ChartWidth));
  chartView_->setVisible(shown);
}

void ChartSideWindows::ShowInfo(bool shown) {
  infoShown_ = shown;
  infoOpenings_ = window_.view.InfoOpenings;
  if (!info_) {
    info_ = new FormFileInfo(owner_);
    info_->OnClosed([this] { commands_.look.UnloadMyInfoFile(); });
  }
  if (shown) info_->Fill(session_, window_);
  info_->setVisible(shown);
}

}  // namespace tarvolt
