// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "files/format/sample_layout.h"
#include "platform/file_system.h"

namespace tarvolt {

/// Largest size of a value that an integer layout holds.
inline constexpr double kIntegerLimit = 32767.0;

/// Rewrites a file whose first `frontSize` bytes are followed by `count` samples of an integer layout: the same samples
/// as doubles. The file is as it was when something is returned.
std::error_code WidenSamples(FileSystem& files, const std::filesystem::path& name, const SampleLayout& integers,
                             std::uint64_t frontSize, std::int64_t count);

}  // namespace tarvolt
