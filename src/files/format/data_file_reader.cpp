// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/data_file_reader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <string_view>

#include "files/format/header_codec.h"

namespace tarvolt {
namespace {

constexpr std::size_t kReadBuffer = 512u << 10;

// A step that spans the run as the writers' End and the readers' count have it; neither may be corrected alone.
double StepWithoutStamps(const DataFileHeader& header, std::int32_t lastIndex) {
  return lastIndex > 1 ? (header.end - header.start) / (lastIndex - 1) : 0;
}

}  // namespace

OpenResult DataFileReader::Open(const std::filesystem::path& name) {
  bufferCount_ = 0;
  file_ = files_.Open(name, OpenMode::Read, error_);
  if (!file_) return OpenResult::Missing;
  const OpenResult result = ReadFrontInMemory();
  if (result != OpenResult::Ok) file_.reset();
  return result;
}

// Notes that memory cannot hold are as good as none, and must not end a program that is recording.
OpenResult DataFileReader::ReadFrontInMemory() {
  try {
    return ReadFront();
  } catch (const std::bad_alloc&) {
    return OpenResult::Corrupted;
  }
}

OpenResult DataFileReader::ReadFront() {
  fileSize_ = file_->Size(error_);
  if (error_) return OpenResult::Unreadable;

  HeaderBytes bytes;
  const std::size_t inFile = std::min<std::uint64_t>(fileSize_, bytes.size());
  std::size_t read = 0;
  ReadAll(bytes.data(), inFile, read);
  if (error_ || read < inFile) return OpenResult::Unreadable;
  if (read < bytes.size()) {
    return BeginsAsHeader({bytes.data(), read}) ? OpenResult::TooShort : OpenResult::Corrupted;
  }
  header_ = DecodeHeader(std::string_view(bytes.data(), bytes.size()));
  if (header_.channels < 1 || header_.channels > kMaxFileChannels) return OpenResult::Corrupted;
  if (header_.notesLength > kNotesLimit) return OpenResult::Corrupted;

  const std::uint64_t claimed = static_cast<std::uint64_t>(std::max(header_.notesLength, 0));
  rawNotes_.resize(std::min(claimed, fileSize_ - kHeaderSize));
  ReadAll(rawNotes_.data(), rawNotes_.size(), read);
  if (error_) return OpenResult::Unreadable;
  rawNotes_.resize(read);
  notes_ = ParseNotes(rawNotes_);

  layout_ = SampleLayout{header_.channels, !notes_.noTimeStamps, notes_.integers};
  sampleOffset_ = kHeaderSize + rawNotes_.size();
  CountSamples();
  return OpenResult::Ok;
}

void DataFileReader::Force(const ForcedValues& forced) {
  if (forced.ForceChannels > 0) {
    layout_.channels = std::min(forced.ForceChannels, kMaxFileChannels);
    header_.channels = static_cast<std::int16_t>(layout_.channels);
  }
  if (forced.ForceInteger != 0) layout_.integers = forced.ForceInteger == 2;
  if (forced.ForceNoStamps != 0) layout_.timeStamps = forced.ForceNoStamps != 2;
  if (!layout_.timeStamps) {
    header_.start = forced.start.value_or(header_.start);
    header_.end = forced.end.value_or(header_.end);
  }
  CountSamples();
}

void DataFileReader::CountSamples() {
  bufferCount_ = 0;
  lastIndex_ = LastIndexOfFile(layout_, fileSize_, rawNotes_.size());
  wholeCount_ = static_cast<std::int32_t>(std::min<std::int64_t>(WholeSamples(layout_, fileSize_ - sampleOffset_),
                                                                 std::numeric_limits<std::int32_t>::max() - 1));
  step_ = layout_.timeStamps ? 0 : StepWithoutStamps(header_, lastIndex_);
}

bool DataFileReader::EndsWithinSample() const {
  return fileSize_ > sampleOffset_ && (fileSize_ - sampleOffset_) % layout_.BytesPerSample() != 0;
}

bool DataFileReader::ReadSample(std::int32_t index, FileSample& sample) {
  if (index < 0 || index > lastIndex_ || wholeCount_ == 0) return false;
  const std::int32_t stored = std::min(index, wholeCount_ - 1);
  const bool buffered = stored >= bufferFirst_ && stored - bufferFirst_ < bufferCount_;
  if (!buffered && !FillBuffer(stored)) return false;
  DecodeSample(buffer_.data() + layout_.BytesPerSample() * (stored - bufferFirst_), layout_, sample);
  if (!layout_.timeStamps) sample.time = header_.start + index * step_;
  return true;
}

bool DataFileReader::FillBuffer(std::int32_t index) {
  const std::size_t stride = layout_.BytesPerSample();
  const auto wanted = std::min<std::int32_t>(static_cast<std::int32_t>(kReadBuffer / stride), wholeCount_ - index);
  buffer_.resize(wanted * stride);
  bufferCount_ = 0;
  file_->Seek(sampleOffset_ + stride * static_cast<std::uint64_t>(index), error_);
  if (error_) return false;
  std::size_t read = 0;
  ReadAll(buffer_.data(), buffer_.size(), read);
  bufferFirst_ = index;
  bufferCount_ = static_cast<std::int32_t>(read / stride);
  if (bufferCount_ > 0) return true;
  if (!error_) error_ = std::make_error_code(std::errc::io_error);
  return false;
}

void DataFileReader::ReadAll(char* to, std::size_t size, std::size_t& read) {
  read = 0;
  error_.clear();
  while (read < size) {
    const std::size_t got = file_->Read(to + read, size - read, error_);
    read += got;
    if (error_ || got == 0) return;
  }
}

}  // namespace tarvolt
