// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/chart_steps.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvolt {
namespace {

constexpr double kScrollPart = 0.25;

// A step of 200 per cent and more would turn the range over.
double Step(int clickInc) {
  return std::clamp(clickInc / 200.0, 0.0, 0.95);
}

void WidenX(StripChart& chart, double factor) {
  SetRange(chart, {chart.XAxisMin, chart.XAxisMin + (chart.XAxisMax - chart.XAxisMin) * factor, chart.YAxisMin,
                   chart.YAxisMax});
}

void WidenY(StripChart& chart, double factor) {
  ChartRange range = RangeOf(chart);
  if (range.yMin <= 0 && range.yMax >= 0) {
    range.yMin *= factor;
    range.yMax *= factor;
  } else {
    const double middle = range.yMin / 2 + range.yMax / 2;
    const double half = (range.yMax / 2 - range.yMin / 2) * factor;
    range.yMin = middle - half;
    range.yMax = middle + half;
  }
  SetRange(chart, range);
}

void MoveX(StripChart& chart, double shift) {
  SetRange(chart, {chart.XAxisMin + shift, chart.XAxisMax + shift, chart.YAxisMin, chart.YAxisMax});
}

void MoveY(StripChart& chart, double shift) {
  SetRange(chart, {chart.XAxisMin, chart.XAxisMax, chart.YAxisMin + shift, chart.YAxisMax + shift});
}

// First index whose time is at least `x`, or above it, of times that rise.
std::int32_t FirstNotBelow(const StripChart& chart, double x, bool orEqual) {
  const SampleColumns& samples = chart.Samples();
  std::int32_t low = 0;
  std::int32_t high = samples.Count();
  while (low < high) {
    const std::int32_t middle = low + (high - low) / 2;
    const double time = samples.Time(middle);
    if (orEqual ? time < x : time <= x) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

// The count of samples when none is accepted.
template <class Accepts>
std::int32_t WalkToFirst(const SampleColumns& samples, Accepts accepts) {
  std::int32_t index = 0;
  while (index < samples.Count() && !accepts(samples.Time(index))) ++index;
  return index;
}

}  // namespace

ChartRange RangeOf(const StripChart& chart) {
  return {chart.XAxisMin, chart.XAxisMax, chart.YAxisMin, chart.YAxisMax};
}

void SetRange(StripChart& chart, ChartRange range) {
  if (range.yMin == range.yMax) {
    range.yMin -= 0.1;
    range.yMax += 0.1;
  }
  if (std::isfinite(range.xMin) && std::isfinite(range.xMax) && range.xMin <= range.xMax) {
    chart.XAxisMin = range.xMin;
    chart.XAxisMax = range.xMax;
  }
  if (std::isfinite(range.yMin) && std::isfinite(range.yMax) && range.yMin <= range.yMax) {
    chart.YAxisMin = range.yMin;
    chart.YAxisMax = range.yMax;
  }
  ++chart.RepaintRequests;
}

void IncX(StripChart& chart, int clickInc) {
  WidenX(chart, 1 + Step(clickInc));
}

void DecX(StripChart& chart, int clickInc) {
  WidenX(chart, 1 - Step(clickInc));
}

void IncY(StripChart& chart, int clickInc) {
  WidenY(chart, 1 + Step(clickInc));
}

void DecY(StripChart& chart, int clickInc) {
  WidenY(chart, 1 - Step(clickInc));
}

void ScrollLeft(StripChart& chart) {
  if (chart.Count() == 0) return;
  const double room = chart.XAxisMin - chart.Samples().TimeSpan().lowest;
  MoveX(chart, -std::clamp((chart.XAxisMax - chart.XAxisMin) * kScrollPart, 0.0, std::max(room, 0.0)));
}

void ScrollRight(StripChart& chart) {
  if (chart.Count() == 0) return;
  const double room = chart.Samples().TimeSpan().highest - chart.XAxisMax;
  MoveX(chart, std::clamp((chart.XAxisMax - chart.XAxisMin) * kScrollPart, 0.0, std::max(room, 0.0)));
}

void ScrollUp(StripChart& chart) {
  MoveY(chart, (chart.YAxisMax - chart.YAxisMin) * kScrollPart);
}

void ScrollDown(StripChart& chart) {
  MoveY(chart, -(chart.YAxisMax - chart.YAxisMin) * kScrollPart);
}

ChartRange FullRange(const StripChart& chart, int channels) {
  ChartRange range = RangeOf(chart);
  if (chart.Count() == 0) return range;
  if (const MinMax& times = chart.Samples().TimeSpan(); !times.IsEmpty()) {
    range.xMin = times.lowest;
    range.xMax = times.highest;
  }
  MinMax all;
  for (int channel = 0; channel < std::min(channels, chart.ChannelCount()); ++channel) {
    const MinMax extremes = chart.Samples().Extremes(channel);
    if (!extremes.IsEmpty()) all.Widen(extremes);
  }
  if (all.IsEmpty()) return range;
  range.yMin = all.lowest;
  range.yMax = all.highest;
  return range;
}

void FitX(StripChart& chart) {
  if (chart.Count() == 0) return;
  const ChartRange all = FullRange(chart, 0);
  SetRange(chart, {all.xMin, all.xMax, chart.YAxisMin, chart.YAxisMax});
}

void FitY(StripChart& chart, int channels) {
  if (chart.Count() == 0) return;
  const ChartRange all = FullRange(chart, channels);
  SetRange(chart, {chart.XAxisMin, chart.XAxisMax, all.yMin, all.yMax});
}

void FollowNewest(StripChart& chart) {
  if (!chart.AutoScroll || chart.Mode != ChartMode::Tracking || chart.Count() == 0) return;
  const double newest = chart.GetTime(chart.Count() - 1);
  if (newest <= chart.XAxisMax && newest >= chart.XAxisMin) return;
  const double width = chart.XAxisMax - chart.XAxisMin;
  chart.XAxisMax = newest;
  chart.XAxisMin = newest - width;
}

std::int32_t FindXaxisMinIndex(const StripChart& chart) {
  return FindXaxisMinIndex(chart, chart.XAxisMin);
}

std::int32_t FindXaxisMaxIndex(const StripChart& chart) {
  return FindXaxisMaxIndex(chart, chart.XAxisMax);
}

std::int32_t FindXaxisMinIndex(const StripChart& chart, double left) {
  const SampleColumns& samples = chart.Samples();
  const std::int32_t first = samples.TimesRise() ? FirstNotBelow(chart, left, true)
                                                 : WalkToFirst(samples, [left](double time) { return time >= left; });
  return std::max(std::min(first, samples.Count() - 1), 0);
}

std::int32_t FindXaxisMaxIndex(const StripChart& chart, double right) {
  const SampleColumns& samples = chart.Samples();
  if (samples.TimesRise()) return FirstNotBelow(chart, right, false) - 1;
  std::int32_t last = samples.Count() - 1;
  while (last >= 0 && !(samples.Time(last) <= right)) --last;
  return last;
}

std::int32_t NearestIndex(const StripChart& chart, double x) {
  const SampleColumns& samples = chart.Samples();
  const std::int32_t count = samples.Count();
  if (count == 0) return -1;
  if (!samples.TimesRise()) {
    double least = std::numeric_limits<double>::infinity();
    for (std::int32_t i = 0; i < count; ++i) least = std::min(least, std::abs(samples.Time(i) - x));
    const std::int32_t nearest = WalkToFirst(samples, [x, least](double time) { return std::abs(time - x) <= least; });
    return nearest < count ? nearest : 0;
  }
  const std::int32_t after = std::min(FirstNotBelow(chart, x, true), count - 1);
  if (after == 0) return 0;
  return x - samples.Time(after - 1) <= samples.Time(after) - x ? after - 1 : after;
}

}  // namespace tarvolt
