// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/plot/qcp.h"

namespace tarvolt {

/// Ticks at round times of day, labelled as the x axis is: "hh:nn:ss", with milliseconds, and " LMST" for a sidereal
/// chart. A span of more than a day has the date below.
class TimeTicker final : public QCPAxisTicker {
 public:
  bool milliseconds = false;
  bool sidereal = false;
  int minorCount = 5;

 protected:
  double getTickStep(const QCPRange& range) override;
  int getSubTickCount(double tickStep) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

 private:
  double span_ = 0;
};

/// Ticks at round values, with as many decimals as the setting asks, or more where the ticks need them.
class ValueTicker final : public QCPAxisTicker {
 public:
  int decimals = 2;
  int minorCount = 5;
  double scale = 1;  ///< what the axis shows is the value times this

 protected:
  double getTickStep(const QCPRange& range) override;
  int getSubTickCount(double tickStep) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

 private:
  double step_ = 1;
};

}  // namespace tarvolt
