// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>

#include "timebase/time_stamp.h"

class QWidget;

namespace tarvolt {

/// Asks for a date and a time to the millisecond, beginning with `stamp`. Nothing when it was cancelled. Yields.
std::optional<TimeStamp> FormDateEntry(QWidget* parent, const QString& prompt, TimeStamp stamp);

}  // namespace tarvolt
