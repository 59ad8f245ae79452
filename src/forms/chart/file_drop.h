// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMimeData>
#include <string>

namespace tarvolt {

/// The data file that is being dropped; empty for anything else. A data file's name ends in ".TVD" in any case.
std::string DroppedDataFile(const QMimeData& data);

}  // namespace tarvolt
