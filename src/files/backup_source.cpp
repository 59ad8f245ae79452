#include "files/backup_source.h"

#include <algorithm>
#include <array>
#include <limits>

#include "files/header_codec.h"

namespace tarvolt {
namespace {

bool ShowsRunWithBackup(const SaveState& save) {
  return save.BackupActive && !save.LoadedFromFile;
}

}  // namespace

SampleLayout LayoutOfSettings(const Settings& settings, int channels) {
  return SampleLayout{channels, !settings.NoTimeStamps, settings.SaveAsIntegers};
}

SampleLayout LayoutOfBackup(const SaveState& save) {
  return SampleLayout{save.Backup.channels, save.Backup.timeStamps, save.Backup.integers};
}

bool MiniWanted(const Settings& settings, const ChartWindow& window) {
  return window.Mode == SessionMode::Client ? settings.MiniClient : settings.MiniServer;
}

bool IsMini(const Settings& settings, const ChartWindow& window) {
  return ShowsRunWithBackup(window.save) ? window.save.Backup.mini : MiniWanted(settings, window);
}

bool BackupWanted(const Settings& settings, const ChartWindow& window) {
  if (ShowsRunWithBackup(window.save)) return true;
  return window.Mode == SessionMode::Client ? settings.ClientDiskBackUp : settings.DiskBackUp;
}

bool RunLiesInBackup(const Settings& settings, const ChartWindow& window) {
  if (window.save.LoadedFromFile || !IsMini(settings, window)) return false;
  return window.run.DataNeedsSave || window.save.BackupActive;
}

TimeStamp StartOfRun(const RunState& run) {
  return run.ChartIsLMST ? run.time.startLMST : run.time.firstStamp;
}

std::string RunMarkerKey(const ChartWindow& window) {
  if (window.Mode != SessionMode::Client || window.Name.empty()) return "LocalRun";
  return std::string("ClientRun") + window.Name.back();
}

// The free-text notes of a backup say nothing about its layout, so only header and length are looked at.
std::optional<BackupContents> FindBackup(Session& session, const ChartWindow& window) {
  if (!ShowsRunWithBackup(window.save)) return std::nullopt;
  std::error_code error;
  const std::unique_ptr<File> file = session.host.files.Open(window.save.LocalBackupFile, OpenMode::Read, error);
  if (!file) return std::nullopt;
  const std::uint64_t size = file->Size(error);
  HeaderBytes bytes;
  if (error || file->Read(bytes.data(), bytes.size(), error) < bytes.size() || error) return std::nullopt;
  const DataFileHeader header = DecodeHeader(std::string_view(bytes.data(), bytes.size()));
  const SampleLayout layout = LayoutOfBackup(window.save);
  const std::uint64_t offset = kHeaderSize + static_cast<std::uint64_t>(std::max(header.notesLength, 0));
  const bool sameChannels = header.channels == layout.channels && layout.channels == window.chart.ChannelCount();
  if (!sameChannels || size < offset) return std::nullopt;

  BackupContents contents;
  contents.count = WholeSamples(layout, size - offset);
  contents.samples = {window.save.LocalBackupFile, offset, contents.count * layout.BytesPerSample()};
  return contents;
}

std::int32_t LastIndexOfRun(Session& session, const ChartWindow& window) {
  std::int64_t count = window.chart.Count();
  if (IsMini(session.settings, window)) {
    if (const auto backup = FindBackup(session, window)) count = std::max(count, backup->count);
  }
  return static_cast<std::int32_t>(std::min<std::int64_t>(count, std::numeric_limits<std::int32_t>::max()) - 1);
}

}  // namespace tarvolt
