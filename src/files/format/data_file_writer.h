// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "display/sample_columns.h"
#include "files/format/part_file.h"
#include "files/format/sample_layout.h"
#include "model/data_file_header.h"
#include "platform/file_system.h"

namespace tarvolt {

/// Samples that lie in a file already, in the layout of the file to be written.
struct StoredSamples {
  std::filesystem::path file;
  std::uint64_t offset = 0;
  std::uint64_t bytes = 0;
};

/// All that a data file will hold beside the samples of a store.
struct DataFilePlan {
  DataFileHeader header;  ///< its notesLength is that of `notesBlock`
  std::string notesBlock;
  SampleLayout layout;
  std::int32_t first = 0;  ///< samples of the store, both included; none with last below first
  std::int32_t last = -1;
  std::optional<StoredSamples> stored;  ///< when set, the samples come from there and not from the store
};

/// Writes the samples first..last of the columns, converted in pieces of a few hundred kilobytes.
void WriteSamples(PartFile& file, const SampleColumns& samples, const SampleLayout& layout, std::int32_t first,
                  std::int32_t last);

/// Writes a whole data file under `name`: complete and on the disk when nothing is returned, else `name` is as it was.
std::error_code WriteDataFile(FileSystem& files, const DataFilePlan& plan, const SampleColumns& samples,
                              const std::filesystem::path& name);

}  // namespace tarvolt
