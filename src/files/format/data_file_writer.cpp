// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/data_file_writer.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "files/format/header_codec.h"

namespace tarvolt {
namespace {

constexpr std::size_t kWriteBuffer = 1u << 20;

}  // namespace

void WriteSamples(PartFile& file, const SampleColumns& samples, const SampleLayout& layout, std::int32_t first,
                  std::int32_t last) {
  const std::size_t stride = layout.BytesPerSample();
  const auto perPiece = static_cast<std::int32_t>(kWriteBuffer / stride);
  std::string buffer(perPiece * stride, '\0');
  for (std::int64_t at = first; at <= last && !file.Error(); at += perPiece) {
    const auto count = static_cast<std::int32_t>(std::min<std::int64_t>(perPiece, last - at + 1));
    EncodeSamples(samples, layout, static_cast<std::int32_t>(at), count, buffer.data());
    file.Write(std::string_view(buffer).substr(0, count * stride));
  }
}

std::error_code WriteDataFile(FileSystem& files, const DataFilePlan& plan, const SampleColumns& samples,
                              const std::filesystem::path& name) {
  PartFile file(files, name);
  const HeaderBytes header = EncodeHeader(plan.header);
  file.Write(std::string_view(header.data(), header.size()));
  file.Write(plan.notesBlock);
  if (plan.stored) {
    std::error_code error;
    const std::unique_ptr<File> source = files.Open(plan.stored->file, OpenMode::Read, error);
    if (!source) return error;
    file.CopyFrom(*source, plan.stored->offset, plan.stored->bytes);
  } else {
    WriteSamples(file, samples, plan.layout, plan.first, plan.last);
  }
  return file.Commit();
}

}  // namespace tarvolt
