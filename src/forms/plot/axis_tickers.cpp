// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/plot/axis_tickers.h"

#include <algorithm>
#include <cmath>

#include "forms/qt_text.h"
#include "timebase/time_stamp.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

constexpr double kDay = 86400;
constexpr int kMostDecimals = 12;

/// Seconds that divide a minute, an hour or a day.
constexpr double kTimeSteps[] = {0.001, 0.002, 0.005, 0.01,     0.02,     0.05,     0.1,      0.2,
                                 0.5,   1,     2,     5,        10,       15,       30,       60,
                                 120,   300,   600,   900,      1800,     3600,     7200,     10800,
                                 21600, 43200, kDay,  2 * kDay, 3 * kDay, 5 * kDay, 7 * kDay, 14 * kDay};

}  // namespace

double TimeTicker::getTickStep(const QCPRange& range) {
  span_ = range.size();
  setTickOrigin(std::floor(range.lower));
  const double wanted = range.size() * kDay / std::max(tickCount(), 1);
  if (wanted > std::end(kTimeSteps)[-1]) return std::ceil(wanted / kDay);
  const auto farness = [wanted](double step) { return std::abs(std::log(step / wanted)); };
  const double* nearest = std::min_element(std::begin(kTimeSteps), std::end(kTimeSteps),
                                           [&](double a, double b) { return farness(a) < farness(b); });
  return *nearest / kDay;
}

int TimeTicker::getSubTickCount(double) {
  return minorCount;
}

QString TimeTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
  const bool fine = milliseconds || span_ * kDay < tickCount();
  std::string text = FormatDate(tick, AxisPicture(fine, sidereal));
  if (span_ > 1 && !sidereal) text += "\n" + FormatDate(tick, "YYYY-MM-DD");
  return ToQString(text);
}

double ValueTicker::getTickStep(const QCPRange& range) {
  step_ = QCPAxisTicker::getTickStep(range);
  return step_;
}

int ValueTicker::getSubTickCount(double) {
  return minorCount;
}

QString ValueTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
  const double value = std::abs(tick) < step_ * 1e-6 ? 0 : tick / scale;
  const int needed = static_cast<int>(std::ceil(-std::log10(step_ / scale) - 1e-9));
  if (std::abs(value) >= 1e9 || needed > 8) return QString::number(value, 'g', 6);
  return QString::number(value, 'f', std::clamp(std::max(decimals, needed), 0, kMostDecimals));
}

}  // namespace tarvolt
