// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/backup_source.h"

#include <algorithm>
#include <array>
#include <limits>

#include "files/format/header_codec.h"

namespace tarvolt {

SampleLayout LayoutOf(const SampleForm& form) {
  return SampleLayout{form.channels, form.timeStamps, form.integers};
}

SampleLayout LayoutOfChart(const Settings& settings, const ChartWindow& window) {
  SampleForm form = window.save.keeping.Form;
  if (window.save.keeping.LoadedFromFile) form = {0, !settings.timing.NoTimeStamps, settings.files.SaveAsIntegers};
  form.channels = window.chart.ChannelCount();
  return LayoutOf(form);
}

TimeStamp StartOfRun(const RunState& run) {
  return run.ChartIsLMST ? run.time.startLMST : run.time.firstStamp;
}

// The free-text notes of a backup say nothing about its layout, so only header and length are looked at.
std::optional<BackupContents> FindBackup(Session& session, const ChartWindow& window) {
  if (!window.save.keeping.BackupActive) return std::nullopt;
  std::error_code error;
  const std::unique_ptr<File> file =
      session.host.files.Open(window.save.keeping.LocalBackupFile, OpenMode::Read, error);
  if (!file) return std::nullopt;
  const std::uint64_t size = file->Size(error);
  HeaderBytes bytes;
  if (error || file->Read(bytes.data(), bytes.size(), error) < bytes.size() || error) return std::nullopt;
  const DataFileHeader header = DecodeHeader(std::string_view(bytes.data(), bytes.size()));
  const SampleLayout layout = LayoutOf(window.save.keeping.Form);
  const std::uint64_t offset = kHeaderSize + static_cast<std::uint64_t>(std::max(header.notesLength, 0));
  const bool sameChannels = header.channels == layout.channels && layout.channels == window.chart.ChannelCount();
  if (!sameChannels || size < offset) return std::nullopt;

  BackupContents contents;
  contents.count = WholeSamples(layout, size - offset);
  contents.samples = {window.save.keeping.LocalBackupFile, offset, contents.count * layout.BytesPerSample()};
  return contents;
}

std::int32_t LastIndexOfRun(Session& session, const ChartWindow& window) {
  std::int64_t count = window.chart.Count();
  if (window.save.keeping.BackupAlone()) {
    if (const auto backup = FindBackup(session, window)) count = std::max(count, backup->count);
  }
  return static_cast<std::int32_t>(std::min<std::int64_t>(count, std::numeric_limits<std::int32_t>::max()) - 1);
}

}  // namespace tarvolt
