#include "display/column_reduction.h"

#include <algorithm>

namespace tarvolt {
namespace {

// First index from `low` on whose time is at least `x`. The answer is near `low` for the next column, so the search
// widens from there.
std::int32_t FirstAtOrAfter(const SampleColumns& samples, std::int32_t low, double x) {
  const std::int32_t count = samples.Count();
  std::int64_t step = 1;
  std::int64_t high = low;
  while (high < count && samples.Time(static_cast<std::int32_t>(high)) < x) {
    low = static_cast<std::int32_t>(high) + 1;
    high += step;
    step *= 2;
  }
  auto end = static_cast<std::int32_t>(std::min<std::int64_t>(high, count));
  while (low < end) {
    const std::int32_t middle = low + (end - low) / 2;
    if (samples.Time(middle) < x) {
      low = middle + 1;
    } else {
      end = middle;
    }
  }
  return low;
}

// First index whose time is above `x`.
std::int32_t FirstAfter(const SampleColumns& samples, std::int32_t low, double x) {
  std::int32_t index = FirstAtOrAfter(samples, low, x);
  while (index < samples.Count() && samples.Time(index) == x) ++index;
  return index;
}

}  // namespace

std::vector<PixelColumn> ReduceToColumns(const StripChart& chart, int channel, double xMin, double xMax, int width) {
  std::vector<PixelColumn> columns;
  if (channel < 0 || channel >= chart.ChannelCount() || width < 1 || !(xMin < xMax)) return columns;
  const SampleColumns& samples = chart.Samples();
  columns.reserve(static_cast<std::size_t>(width));
  std::int32_t begin = FirstAtOrAfter(samples, 0, xMin);
  for (int x = 0; x < width && begin < samples.Count(); ++x) {
    const bool isLast = x == width - 1;
    const double edge = xMin + (xMax - xMin) * (static_cast<double>(x + 1) / width);
    const std::int32_t end = isLast ? FirstAfter(samples, begin, xMax) : FirstAtOrAfter(samples, begin, edge);
    if (end > begin) {
      const MinMax range = samples.Range(channel, begin, end - 1);
      columns.push_back({x, samples.Value(channel, begin), range.lowest, range.highest, samples.Value(channel, end - 1),
                         samples.Time(begin), samples.Time(end - 1)});
    }
    begin = end;
  }
  return columns;
}

}  // namespace tarvolt
