#include "files/backup_source.h"

#include <algorithm>
#include <array>
#include <limits>

#include "files/header_codec.h"

namespace tarvolt {

SampleLayout LayoutOfSettings(const Settings& settings, int channels) {
  return SampleLayout{channels, !settings.NoTimeStamps, settings.SaveAsIntegers};
}

bool IsMini(const Settings& settings, const ChartWindow& window) {
  return window.Mode == SessionMode::Client ? settings.MiniClient : settings.MiniServer;
}

bool BackupWanted(const Settings& settings, const ChartWindow& window) {
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
  if (!window.save.BackupActive || window.save.LoadedFromFile) return std::nullopt;
  std::error_code error;
  const std::unique_ptr<File> file = session.host.files.Open(window.save.LocalBackupFile, OpenMode::Read, error);
  if (!file) return std::nullopt;
  const std::uint64_t size = file->Size(error);
  HeaderBytes bytes;
  if (error || file->Read(bytes.data(), bytes.size(), error) < bytes.size() || error) return std::nullopt;
  const DataFileHeader header = DecodeHeader(std::string_view(bytes.data(), bytes.size()));
  const int channels = window.chart.ChannelCount();
  const std::uint64_t offset = kHeaderSize + static_cast<std::uint64_t>(std::max(header.notesLength, 0));
  if (header.channels != channels || size < offset) return std::nullopt;

  const SampleLayout layout = LayoutOfSettings(session.settings, channels);
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
