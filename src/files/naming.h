// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// What a name is for.
enum class NameKind { Wav, Log, Data };

/// What NameDataFile gives when the chart holds no usable data.
inline constexpr const char* kBadFile = "BADFILE";

/// A folder name of the characters 0-9, A-Z, a-z and "_": every other becomes "_", trailing ones are dropped.
std::string NameDir(std::string_view text);

/// The name for a file of this window, with its folder when `withPath`. With `withPath` the folders are made as the
/// organising settings ask, and those made are noted in the window's CreatedFolders; the header's local name is
/// cleaned. A data file of fewer than three samples is kBadFile. A folder that cannot be made is reported in the
/// session log.
std::filesystem::path NameDataFile(Session& session, ChartWindow& window, NameKind kind, bool withPath,
                                   double offsetDays = 0);

/// The folder that the organising settings give a data file of that date. Makes nothing.
std::filesystem::path FolderOfDate(const Session& session, TimeStamp date);

/// `name`, or a numbered one beside it when a file of that name exists that this log was not itself saved to: names are
/// good to the second only, and a local clock repeats an hour, but no earlier file is ever replaced by another log, nor
/// the log's own by a view of it.
std::filesystem::path NameOfOwn(Session& session, const ChartWindow& window, const std::filesystem::path& name);

}  // namespace tarvolt
