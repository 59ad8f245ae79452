// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/sample_layout.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "files/format/header_codec.h"
#include "files/format/little_endian.h"
#include "text/number.h"

namespace tarvolt {
namespace {

/// Samples encoded at a time: few enough that their bytes stay in the processor's nearest cache while one column after
/// the other is strewn into them.
constexpr std::int32_t kSamplesAPiece = 128;

void EncodeValues(std::span<const double> values, bool integers, char* to, std::size_t stride) {
  for (const double stored : values) {
    const double value = SampleColumns::Shown(stored);
    if (integers) {
      PutLittle(to, RoundToInt16(value));
    } else {
      PutLittle(to, value);
    }
    to += stride;
  }
}

// Samples that lie in one piece of memory in every column.
void EncodePiece(const SampleColumns& samples, const SampleLayout& layout, std::int32_t first, std::int32_t count,
                 char* to) {
  const std::size_t stride = layout.BytesPerSample();
  if (layout.timeStamps) {
    char* place = to;
    for (const double time : samples.TimePiece(first, count)) {
      PutLittle(place, time);
      place += stride;
    }
    to += 8;
  }
  static constexpr std::array<double, kSamplesAPiece> kZeros{};
  for (int channel = 0; channel < layout.channels; ++channel, to += layout.integers ? 2 : 8) {
    const bool stored = channel < samples.ChannelCount();
    EncodeValues(stored ? samples.ValuePiece(channel, first, count) : std::span(kZeros).first(count), layout.integers,
                 to, stride);
  }
}

}  // namespace

std::int64_t WholeSamples(const SampleLayout& layout, std::uint64_t sampleBytes) {
  return static_cast<std::int64_t>(sampleBytes / layout.BytesPerSample());
}

std::int32_t LastIndexOfFile(const SampleLayout& layout, std::uint64_t fileLength, std::uint64_t notesLength) {
  if (fileLength < kHeaderSize + notesLength) return -1;
  const std::int64_t whole = WholeSamples(layout, fileLength - kHeaderSize - notesLength);
  // Without stamps and without integers nothing is subtracted: meant, all files of this kind are counted so.
  const bool oneTooMany = !layout.timeStamps && !layout.integers;
  const std::int64_t last = oneTooMany ? whole : whole - 1;
  return static_cast<std::int32_t>(std::min<std::int64_t>(last, std::numeric_limits<std::int32_t>::max() - 1));
}

void EncodeSamples(const SampleColumns& samples, const SampleLayout& layout, std::int32_t first, std::int32_t count,
                   char* to) {
  while (count > 0) {
    const auto piece = static_cast<std::int32_t>(samples.TimePiece(first, std::min(count, kSamplesAPiece)).size());
    EncodePiece(samples, layout, first, piece, to);
    first += piece;
    count -= piece;
    to += piece * layout.BytesPerSample();
  }
}

void DecodeSample(const char* from, const SampleLayout& layout, FileSample& sample) {
  if (layout.timeStamps) {
    sample.time = GetLittle<double>(from);
    from += 8;
  }
  if (layout.integers) {
    for (int i = 0; i < layout.channels; ++i) sample.values[i] = GetLittle<std::int16_t>(from + 2 * i);
  } else {
    for (int i = 0; i < layout.channels; ++i) sample.values[i] = GetLittle<double>(from + 8 * i);
  }
}

}  // namespace tarvolt
