#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tarvolt {

inline constexpr int kChannels = 8;

/// The session-wide settings, each under its key's own name. Defaults are those of the table of settings.
struct Settings {
  // Filled in by the table of settings; see settings_table.
};

}  // namespace tarvolt
