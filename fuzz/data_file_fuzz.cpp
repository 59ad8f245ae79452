// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a data file: opened, read through, and loaded into columns as a chart would be.

#include <cstddef>
#include <cstdint>

#include "files/format/data_file_reader.h"
#include "require.h"
#include "sim/sim_disk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  SimDisk disk(1);
  disk.Put("any.tvd", std::string_view(reinterpret_cast<const char*>(data), size));
  DataFileReader reader(disk);
  if (reader.Open("any.tvd") != OpenResult::Ok) return 0;
  Require(reader.SampleOffset() <= size);
  Require(reader.WholeCount() * reader.Layout().BytesPerSample() <= size - reader.SampleOffset());
  Require(reader.LastIndex() <= reader.WholeCount());
  FileSample sample;
  for (std::int32_t i = 0; i <= reader.LastIndex(); ++i)
    Require(reader.ReadSample(i, sample) || reader.WholeCount() == 0);
  Require(!reader.ReadSample(reader.LastIndex() + 1, sample));
  return 0;
}
