#include "files/load_samples.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::int32_t kSamplesBetweenYields = 5000;

// In a layout of doubles without stamps the last index is one too high (meant). With more channels the sample behind
// the end repeats the last one; a single channel ends with its file.
std::int32_t SamplesToWalk(const DataFileReader& reader) {
  const std::int32_t counted = reader.LastIndex() + 1;
  return reader.Layout().channels == 1 ? std::min(counted, reader.WholeCount()) : counted;
}

bool Store(StripChart& chart, const ChannelMap& channels, const FileSample& sample) {
  const std::int32_t index = chart.AddTime(sample.time);
  if (chart.Count() != index + 1) return false;
  for (int channel = 0; channel < channels.count; ++channel) {
    double value = sample.values[channels.source[channel]];
    if (channels.addsOffsets) value += channels.offset[channel];
    chart.SetValue(channel, index, value);
  }
  return true;
}

void ShowProgress(ChartWindow& window, std::int32_t range, const std::string& name) {
  window.view.Title = NumberText(std::int64_t{window.chart.Count()}) + " of " + NumberText(std::int64_t{range}) +
                      " Samples Loaded " + name;
  ++window.chart.RepaintRequests;
}

}  // namespace

bool RunInProgress(const RunState& run) {
  return run.ChartRunning || run.Starting || run.chartState != ChartState::Idle;
}

bool ReadSamples(Session& session, ChartWindow& window, DataFileReader& reader, const ChannelMap& channels,
                 const LoadRange& range, const std::string& name) {
  const std::int32_t count = SamplesToWalk(reader);
  FileSample sample;
  for (std::int32_t i = 0; i < count; ++i) {
    const bool wanted = i >= range.firstIndex && i <= range.lastIndex;
    if (!reader.ReadSample(i, sample)) {
      // Damage outside the range costs nothing: what lies before it is passed over, what lies behind it is not needed.
      if (wanted) return false;
      if (i > range.lastIndex) return true;
      i = range.firstIndex - 1;
      continue;
    }
    if (wanted && !Store(window.chart, channels, sample)) return false;
    if ((i + 1) % kSamplesBetweenYields != 0) continue;
    ShowProgress(window, range.lastIndex - range.firstIndex + 1, name);
    session.host.loop.Yield(std::chrono::milliseconds(0));
    if (RunInProgress(window.run)) return false;
  }
  return true;
}

}  // namespace tarvolt
