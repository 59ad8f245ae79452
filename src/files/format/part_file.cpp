// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/part_file.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tarvolt {
namespace {

constexpr std::uint64_t kCopyBuffer = 1u << 20;

}  // namespace

PartFile::PartFile(FileSystem& files, std::filesystem::path name)
    : files_(files), name_(std::move(name)), partName_(name_) {
  partName_ += kPartEnding;
  file_ = files_.Open(partName_, OpenMode::Create, error_);
}

PartFile::~PartFile() {
  if (committed_) return;
  file_.reset();
  std::error_code ignored;
  files_.Remove(partName_, ignored);
}

void PartFile::Write(std::string_view bytes) {
  if (!error_) file_->Write(bytes, error_);
}

void PartFile::CopyFrom(File& source, std::uint64_t offset, std::uint64_t size) {
  if (error_) return;
  source.Seek(offset, error_);
  std::string buffer(std::min(size, kCopyBuffer), '\0');
  while (size > 0 && !error_) {
    const std::size_t read = source.Read(buffer.data(), std::min<std::uint64_t>(size, buffer.size()), error_);
    if (!error_ && read == 0) error_ = std::make_error_code(std::errc::io_error);
    Write(std::string_view(buffer).substr(0, read));
    size -= read;
  }
}

std::error_code PartFile::Commit() {
  if (!error_) file_->Sync(error_);
  file_.reset();
  if (!error_) files_.Rename(partName_, name_, error_);
  committed_ = !error_;
  return error_;
}

}  // namespace tarvolt
