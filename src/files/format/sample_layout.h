// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "display/sample_columns.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// Most channels that a file may hold; the recorder itself fills at most eight.
inline constexpr int kMaxFileChannels = 9;

/// How the samples of one file lie: a stamp or none, then one value a channel, each a double or an int16.
struct SampleLayout {
  int channels = 1;  ///< 1 to kMaxFileChannels
  bool timeStamps = true;
  bool integers = false;

  /// Bytes of one sample, with its stamp where there is one.
  std::size_t BytesPerSample() const {
    return static_cast<std::size_t>(channels) * (integers ? 2 : 8) + (timeStamps ? 8 : 0);
  }
};

/// Whole samples in a sample area of that many bytes; a torn last one does not count.
std::int64_t WholeSamples(const SampleLayout& layout, std::uint64_t sampleBytes);

/// Index of the last sample as every reader counts it, from the length of the file and of its raw notes block; -1 when
/// there is none. Held below the largest index that a chart can have.
std::int32_t LastIndexOfFile(const SampleLayout& layout, std::uint64_t fileLength, std::uint64_t notesLength);

/// Writes the samples first .. first + count - 1 of the columns at `to`, which has room for count x BytesPerSample.
/// In an integer layout values are rounded to nearest, ties to even, and held inside int16; one that is not a number
/// becomes 0. Channels that the columns lack are written as 0.
void EncodeSamples(const SampleColumns& samples, const SampleLayout& layout, std::int32_t first, std::int32_t count,
                   char* to);

/// One sample out of a file.
struct FileSample {
  TimeStamp time = 0;  ///< left alone by DecodeSample in a layout without stamps
  std::array<double, kMaxFileChannels> values{};
};

/// Reads the one sample at `from`, which holds BytesPerSample bytes.
void DecodeSample(const char* from, const SampleLayout& layout, FileSample& sample);

}  // namespace tarvolt
