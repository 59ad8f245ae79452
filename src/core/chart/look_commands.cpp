// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/look_commands.h"

#include <algorithm>

#include "config/settings_table.h"
#include "core/chart/chart_look_store.h"
#include "core/chart/command_states.h"
#include "files/auto_title.h"
#include "model/channel_table.h"
#include "text/number.h"

namespace tarvolt {

void ShowChartLegend(ChartWindow& window) {
  for (int channel = 0; channel < kChannels; ++channel) {
    const std::string& label = window.chart.ChannelName[channel];
    window.view.Legend[channel] = label.empty() ? "CH" + NumberText(std::int64_t{channel + 1}) : label;
  }
  window.view.mnuChannelVisibility = window.chart.ChannelCount() > 1;
  ++window.chart.RepaintRequests;
}

LookCommands::LookCommands(Session& session, ChartWindow& window)
    : session_(session), window_(window), chart_(window.chart), view_(window.view) {}

void LookCommands::mnuVisCH(int channel) {
  if (channel < 0 || channel >= chart_.ChannelCount()) return;
  chart_.ChannelVisible[channel] = !chart_.ChannelVisible[channel];
  if (!chart_.ChannelVisible[channel] && window_.run.ShownChannel == channel + 1) ClearValueDisplay();
  ++chart_.RepaintRequests;
}

void LookCommands::mnuShowAllChannels() {
  chart_.ChannelVisible.fill(true);
  ++chart_.RepaintRequests;
}

void LookCommands::mnuShowLegend() {
  chart_.LegendShown = !chart_.LegendShown;
  ++chart_.RepaintRequests;
}

void LookCommands::mnuShowChartNotations() {
  chart_.NotationsShown = !chart_.NotationsShown;
  ++chart_.RepaintRequests;
}

void LookCommands::mnuDataFileInfo() {
  if (!StatesOf(window_).InfoCommands) return;
  view_.InfoShown = true;
  ++view_.InfoOpenings;
}

void LookCommands::UnloadMyInfoFile() {
  view_.InfoShown = false;
}

void LookCommands::mnuCH(int channel) {
  if (channel < 0 || channel >= window_.run.ChannelCount || window_.run.ShownChannel == channel + 1) {
    return ClearValueDisplay();
  }
  window_.run.ShownChannel = channel + 1;
}

void LookCommands::ClearValueDisplay() {
  window_.run.ShownChannel = 0;
  view_.ValueLabel.clear();
}

void LookCommands::ToggleStatusLine() {
  session_.settings.chart.ShowStatusBar = !view_.StatusBarShown;
  session_.store.SaveSetting(Section::Settings, "ShowStatusBar",
                             session_.settings.chart.ShowStatusBar ? "True" : "False");
  view_.StatusBarShown = session_.settings.chart.ShowStatusBar;
}

void LookCommands::ShowAddress() {
  view_.Status.Say("IP = " + session_.host.sockets.LocalAddress());
}

void LookCommands::ShowLastMessage() {
  const std::string& message = window_.run.LastMessage;
  view_.Status.Say(message.empty() ? "No Message Received " : "Last Msg: " + message);
}

void LookCommands::UpdateAfterOptionsChange() {
  const Settings& settings = session_.settings;
  const bool loaded = window_.save.keeping.LoadedFromFile || window_.save.Loading;
  TakeLook();
  if (!loaded) {
    chart_.XAxisLabel = settings.chart.XALabel;
    chart_.YAxisLabel = settings.chart.YALabel;
  }
  if (!loaded && !RunOn() && !window_.run.Starting() && chart_.Count() == 0) PrepareEmptyChart();
  TakeScale();
  if (settings.chart.AutoTitle) chart_.Title.clear();
  if (RunOn() || chart_.Count() > 0) DoAutoTitle(session_, window_);
  ShowChartLegend();
  ShowArrows();
}

void LookCommands::PrepareEmptyChart() {
  const Settings& settings = session_.settings;
  window_.run.ChannelCount = std::max(ActiveChannels(settings), 1);
  for (int channel = 0; channel < kChannels; ++channel)
    chart_.ChannelName[channel] = settings.channels.ChannelLabel[channel];
  chart_.SetChannelCount(window_.run.ChannelCount);
  chart_.Mode = ChartMode::Browsing;
  chart_.AutoScale = settings.chart.AutoScale;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, settings.chart.AutoScale ? 1 : settings.chart.ChartYaxisMax});
}

// A range that a person has chosen stays while the settings of the scale do.
void LookCommands::TakeScale() {
  const Settings& settings = session_.settings;
  const bool changed = settings.chart.AutoScale != takenAutoScale_ || settings.chart.ChartYaxisMax != takenYaxisMax_;
  takenAutoScale_ = settings.chart.AutoScale;
  takenYaxisMax_ = settings.chart.ChartYaxisMax;
  if (!changed || chart_.Count() == 0) return;
  chart_.AutoScale = settings.chart.AutoScale;
  if (chart_.AutoScale) return FitY(chart_, window_.run.ChannelCount);
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, settings.chart.ChartYaxisMax});
}

void LookCommands::TakeLook() {
  window_.look = LoadChartLook(session_);
  view_.StatusBarShown = session_.settings.chart.ShowStatusBar;
  ++chart_.RepaintRequests;
}

void LookCommands::ShowArrows() {
  view_.ArrowsShown = session_.settings.chart.ArrowButtons;
}

}  // namespace tarvolt
