// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/widen_samples.h"

#include <algorithm>
#include <string>

#include "files/format/part_file.h"

namespace tarvolt {
namespace {

constexpr std::int32_t kSamplesPerPiece = 8192;

// The samples at `from`, in the columns of which a writer encodes.
SampleColumns Decode(const std::string& from, const SampleLayout& layout, std::int32_t count) {
  SampleColumns columns(layout.channels);
  FileSample sample;
  for (std::int32_t i = 0; i < count; ++i) {
    DecodeSample(from.data() + static_cast<std::size_t>(i) * layout.BytesPerSample(), layout, sample);
    columns.Append(sample.time);
    for (int channel = 0; channel < layout.channels; ++channel) {
      columns.SetValue(channel, i, sample.values[static_cast<std::size_t>(channel)]);
    }
  }
  return columns;
}

}  // namespace

std::error_code WidenSamples(FileSystem& files, const std::filesystem::path& name, const SampleLayout& integers,
                             std::uint64_t frontSize, std::int64_t count) {
  std::error_code error;
  const std::unique_ptr<File> source = files.Open(name, OpenMode::Read, error);
  if (!source) return error;
  SampleLayout doubles = integers;
  doubles.integers = false;
  PartFile wide(files, name);
  wide.CopyFrom(*source, 0, frontSize);
  source->Seek(frontSize, error);
  std::string narrowBytes;
  std::string wideBytes;
  while (count > 0 && !error && !wide.Error()) {
    const auto piece = static_cast<std::int32_t>(std::min<std::int64_t>(count, kSamplesPerPiece));
    narrowBytes.resize(static_cast<std::size_t>(piece) * integers.BytesPerSample());
    if (source->Read(narrowBytes.data(), narrowBytes.size(), error) < narrowBytes.size() && !error) {
      error = std::make_error_code(std::errc::io_error);
    }
    if (error) break;
    wideBytes.resize(static_cast<std::size_t>(piece) * doubles.BytesPerSample());
    EncodeSamples(Decode(narrowBytes, integers, piece), doubles, 0, piece, wideBytes.data());
    wide.Write(wideBytes);
    count -= piece;
  }
  return error ? error : wide.Commit();
}

}  // namespace tarvolt
