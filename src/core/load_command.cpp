#include "core/load_command.h"

#include <filesystem>

#include "files/load.h"

namespace tarvolt {

std::optional<std::string> AskForDataFile(Session& session) {
  std::string folder = session.store.GetSetting(Section::Settings, "LastLoadDir");
  if (folder.empty()) folder = session.DataFolder().string();
  const std::optional<std::string> file = session.host.dialogs.AskOpenFile(
      {"Load Data File", folder, "*.tvd", ".tvd", "Tarvolt data (*.tvd)|*.tvd|dat file (*.dat)|*.dat|Any (*.*)|*.*"});
  if (file) {
    session.store.SaveSetting(Section::Settings, "LastLoadDir", std::filesystem::path(*file).parent_path().string());
  }
  return file;
}

bool LoadAndShow(Session& session, ChartWindow& window, ChartCommands& commands, const std::string& path) {
  if (!LoadData(session, window, path)) return false;
  window.chart.TimeMarker.reset();
  window.chart.CursorChannel = -1;
  window.chart.ChannelVisible.fill(true);
  window.chart.NotationsShown = true;
  window.view.mnuRecallXY = false;
  commands.cmdFullView();
  commands.ShowChartLegend();
  commands.ShowArrows();
  commands.CheckScrollEnabled();
  return true;
}

}  // namespace tarvolt
