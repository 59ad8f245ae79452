// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sim/sim_disk.h"

namespace tarvolt {

/// A file's bytes, with what no Sync has made safe.
struct SimDisk::Node {
  /// A write, or a change of the size to `position` when there are no bytes.
  struct Change {
    std::uint64_t position = 0;
    std::string bytes;

    void ApplyTo(std::string& file) const {
      if (bytes.empty() || file.size() < position) file.resize(position, '\0');
      // replace cuts the old part off at the end of the file, so that an append grows the string in place
      if (!bytes.empty()) file.replace(position, bytes.size(), bytes);
    }
  };

  std::string bytes;
  std::string synced;  // these two only while power may be lost
  std::vector<Change> unsynced;
};

}  // namespace tarvolt
