#pragma once

#include <cstddef>

namespace tarvolt {

/// How often this program has asked for memory with new.
std::size_t AllocationCount();

}  // namespace tarvolt
