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

ColumnEdges FindColumnEdges(const StripChart& chart, double xMin, double xMax, int width) {
  ColumnEdges edges;
  if (width < 1 || !(xMin < xMax)) return edges;
  const SampleColumns& samples = chart.Samples();
  edges.begins.reserve(static_cast<std::size_t>(width) + 1);
  edges.begins.push_back(FirstAtOrAfter(samples, 0, xMin));
  for (int x = 1; x < width; ++x) {
    const double edge = xMin + (xMax - xMin) * (static_cast<double>(x) / width);
    edges.begins.push_back(FirstAtOrAfter(samples, edges.begins.back(), edge));
  }
  edges.begins.push_back(FirstAfter(samples, edges.begins.back(), xMax));
  return edges;
}

std::vector<PixelColumn> ReduceToColumns(const StripChart& chart, int channel, const ColumnEdges& edges) {
  std::vector<PixelColumn> columns;
  if (channel < 0 || channel >= chart.ChannelCount() || edges.begins.empty()) return columns;
  const SampleColumns& samples = chart.Samples();
  columns.reserve(edges.begins.size());
  for (std::size_t x = 0; x + 1 < edges.begins.size(); ++x) {
    const std::int32_t begin = edges.begins[x];
    const std::int32_t last = edges.begins[x + 1] - 1;
    if (last < begin) continue;
    const MinMax range = samples.Range(channel, begin, last);
    columns.push_back({static_cast<int>(x), samples.Value(channel, begin), range.lowest, range.highest,
                       samples.Value(channel, last), samples.Time(begin), samples.Time(last)});
  }
  return columns;
}

}  // namespace tarvolt
