#include "display/column_reduction.h"

#include <algorithm>

namespace tarvolt {
namespace {

// First index of low..high whose time is at least `x`; `high` when there is none before it.
std::int32_t Halve(const SampleColumns& samples, std::int32_t low, std::int32_t high, double x) {
  while (low < high) {
    const std::int32_t middle = low + (high - low) / 2;
    if (samples.Time(middle) < x) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

// First index from `low` on whose time is at least `x`. It is near `guess` when samples come evenly, so the search
// widens from there: in a store of many millions each look at a far sample is a look at memory that is not at hand.
std::int32_t FirstAtOrAfter(const SampleColumns& samples, std::int32_t low, double x, std::int32_t guess) {
  const std::int32_t count = samples.Count();
  std::int64_t begin = low;
  std::int64_t end = std::clamp(guess, low, count);
  std::int64_t step = 1;
  while (end < count && samples.Time(static_cast<std::int32_t>(end)) < x) {
    begin = end + 1;
    end = std::min<std::int64_t>(end + step, count);
    step *= 2;
  }
  for (step = 1; end - step >= begin && samples.Time(static_cast<std::int32_t>(end - step)) >= x; step *= 2)
    end -= step;
  begin = std::max(begin, end - step);
  return Halve(samples, static_cast<std::int32_t>(begin), static_cast<std::int32_t>(end), x);
}

// First index whose time is above `x`.
std::int32_t FirstAfter(const SampleColumns& samples, std::int32_t low, double x) {
  std::int32_t index = FirstAtOrAfter(samples, low, x, low);
  while (index < samples.Count() && samples.Time(index) == x) ++index;
  return index;
}

// Moves an edge back to the begin of its bin. The end of the data stays, and so does the edge of a column of few bins.
std::int32_t OnABin(const SampleColumns& samples, std::int32_t edge, std::int32_t before) {
  constexpr std::int32_t kBin = 1 << MinMaxPyramid::kBaseBits;
  constexpr std::int32_t kManyBins = 16;
  if (edge - before < kManyBins * kBin || edge == samples.Count()) return edge;
  return edge / kBin * kBin;
}

}  // namespace

ColumnEdges FindColumnEdges(const StripChart& chart, double xMin, double xMax, int width) {
  ColumnEdges edges;
  if (width < 1 || !(xMin < xMax)) return edges;
  const SampleColumns& samples = chart.Samples();
  edges.begins.reserve(static_cast<std::size_t>(width) + 1);
  edges.begins.push_back(FirstAtOrAfter(samples, 0, xMin, 0));
  std::int32_t held = 0;  // by the column before
  for (int x = 1; x < width; ++x) {
    const double edge = xMin + (xMax - xMin) * (static_cast<double>(x) / width);
    const std::int32_t before = edges.begins.back();
    edges.begins.push_back(OnABin(samples, FirstAtOrAfter(samples, before, edge, before + held), before));
    held = edges.begins.back() - before;
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
