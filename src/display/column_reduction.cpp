// SPDX-License-Identifier: GPL-3.0-or-later
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

double EdgeOf(double xMin, double xMax, int width, int x) {
  return xMin + (xMax - xMin) * (static_cast<double>(x) / width);
}

std::vector<ColumnSpan> SpansOfRisingTimes(const SampleColumns& samples, double xMin, double xMax, int width) {
  std::vector<ColumnSpan> spans;
  spans.reserve(static_cast<std::size_t>(width));
  std::int32_t begin = FirstAtOrAfter(samples, 0, xMin, 0);
  std::int32_t held = 0;  // by the column before
  for (int x = 0; x < width; ++x) {
    const bool isLast = x == width - 1;
    const std::int32_t end =
        isLast ? FirstAfter(samples, begin, xMax)
               : OnABin(samples, FirstAtOrAfter(samples, begin, EdgeOf(xMin, xMax, width, x + 1), begin + held), begin);
    if (end > begin) spans.push_back({x, begin, end});
    held = end - begin;
    begin = end;
  }
  return spans;
}

// The column of a time inside the range.
int ColumnOf(double time, double xMin, double xMax, int width) {
  int low = 0;
  int high = width - 1;
  while (low < high) {
    const int middle = low + (high - low + 1) / 2;
    if (time >= EdgeOf(xMin, xMax, width, middle)) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return low;
}

std::vector<ColumnSpan> SpansOfAnyTimes(const SampleColumns& samples, double xMin, double xMax, int width) {
  constexpr std::size_t kManySteps = 16;
  std::vector<ColumnSpan> spans;
  double left = xMax;  // of the column of the last span, and its right edge
  double right = xMin;
  for (std::int32_t i = 0; i < samples.Count(); ++i) {
    const double time = samples.Time(i);
    if (!(time >= xMin && time <= xMax)) continue;
    if (!spans.empty() && spans.back().end == i && time >= left && time < right) {
      ++spans.back().end;
      continue;
    }
    const int x = ColumnOf(time, xMin, xMax, width);
    left = EdgeOf(xMin, xMax, width, x);
    right = EdgeOf(xMin, xMax, width, x + 1);
    spans.push_back({x, i, i + 1});
  }
  // Of stamps in no order at all a drawing of each step would take as long as there are samples.
  if (spans.size() > kManySteps * static_cast<std::size_t>(width)) {
    std::stable_sort(spans.begin(), spans.end(),
                     [](const ColumnSpan& one, const ColumnSpan& other) { return one.x < other.x; });
  }
  return spans;
}

}  // namespace

ColumnEdges FindColumnEdges(const StripChart& chart, double xMin, double xMax, int width) {
  if (width < 1 || !(xMin < xMax)) return {};
  const SampleColumns& samples = chart.Samples();
  return {samples.TimesRise() ? SpansOfRisingTimes(samples, xMin, xMax, width)
                              : SpansOfAnyTimes(samples, xMin, xMax, width)};
}

std::vector<PixelColumn> ReduceToColumns(const StripChart& chart, int channel, const ColumnEdges& edges) {
  std::vector<PixelColumn> columns;
  if (channel < 0 || channel >= chart.ChannelCount()) return columns;
  const SampleColumns& samples = chart.Samples();
  columns.reserve(edges.spans.size());
  for (const ColumnSpan& span : edges.spans) {
    const std::int32_t last = span.end - 1;
    MinMax range = samples.Range(channel, span.begin, last);
    if (columns.empty() || columns.back().x != span.x) {
      columns.push_back(
          {span.x, samples.Value(channel, span.begin), range.lowest, range.highest, 0, samples.Time(span.begin), 0});
    }
    PixelColumn& column = columns.back();
    range.Widen(MinMax{column.lowest, column.highest});
    column.lowest = range.lowest;
    column.highest = range.highest;
    column.last = samples.Value(channel, last);
    column.lastTime = samples.Time(last);
  }
  return columns;
}

}  // namespace tarvolt
