#include "files/sample_layout.h"

#include <algorithm>
#include <limits>

#include "files/header_codec.h"
#include "files/little_endian.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// One strided column at a time: the inner loops stay free of branches on the layout.
void EncodeColumn(const SampleColumns& samples, int channel, std::int32_t first, std::int32_t count, bool integers,
                  char* to, std::size_t stride) {
  const bool stored = channel < samples.ChannelCount();
  for (std::int32_t i = 0; i < count; ++i, to += stride) {
    const double value = stored ? samples.Value(channel, first + i) : 0.0;
    if (integers) {
      PutLittle(to, RoundToInt16(value));
    } else {
      PutLittle(to, value);
    }
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
  const std::size_t stride = layout.BytesPerSample();
  if (layout.timeStamps) {
    for (std::int32_t i = 0; i < count; ++i) PutLittle(to + stride * i, samples.Time(first + i));
    to += 8;
  }
  const std::size_t width = layout.integers ? 2 : 8;
  for (int channel = 0; channel < layout.channels; ++channel)
    EncodeColumn(samples, channel, first, count, layout.integers, to + width * channel, stride);
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
