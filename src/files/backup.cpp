// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/backup.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "files/backup_source.h"
#include "files/format/data_file_writer.h"
#include "files/format/header_codec.h"
#include "files/format/widen_samples.h"
#include "files/header_info.h"
#include "files/recovery.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr const char* kBackupName = "localdatabackup.tvd";
constexpr std::size_t kCatchUpBytes = 256u << 10;

}  // namespace

LocalBackup::LocalBackup(Session& session, ChartWindow& window) : session_(session), window_(window) {}

void LocalBackup::InitLocalBU() {
  SaveState& save = window_.save;
  const std::filesystem::path file = session_.DataFolder() / kBackupName;
  const bool isFree = FreeBackupPlace(session_, file, ReplaceableFile());
  save.keeping.BackupActive = window_.run.log.DiskBackUp && isFree;
  if (!save.keeping.BackupActive) return;

  file_ = file;
  save.keeping.LocalBackupFile = file;
  notes_ = window_.notes + save.PendingNotes;
  GetHeader(session_, window_, notes_.size());
  const RunState& run = window_.run;
  window_.header.start = run.ChartIsLMST ? run.time.startLMST : NowPrecise(session_.host.clock) + run.time.utOffset;
  save.keeping.Form.channels = window_.chart.ChannelCount();
  layout_ = LayoutOf(save.keeping.Form);
  window_.header.channels = static_cast<std::int16_t>(layout_.channels);
  header_ = window_.header;
  frontSize_ = kHeaderSize + notes_.size();
  samplesInFile_ = 0;
  samplesSynced_ = 0;
  nextIndex_ = 0;
  storeHoldsAll_ = true;
  failing_ = false;
  lengthIsSure_ = true;

  // The marker goes first: from here on a crash must lead the next start to the file.
  MarkLocalRun(session_, file);
  std::error_code error;
  WriteFront(error);
  if (error) TellFailure(error);
}

// At a turnover the log of the file has been saved or set aside. A run begins over one that holds samples only when
// they stand in their file; while the marker says otherwise they must not be lost.
std::filesystem::path LocalBackup::ReplaceableFile() const {
  const bool mayGo = window_.run.ChartRunning() || samplesInFile_ == 0;
  return mayGo ? file_ : std::filesystem::path();
}

void LocalBackup::WriteFront(std::error_code& error) {
  const std::unique_ptr<File> file =
      session_.host.files.Open(window_.save.keeping.LocalBackupFile, OpenMode::Create, error);
  if (!file) return;
  const HeaderBytes bytes = EncodeHeader(header_);
  file->Write(std::string_view(bytes.data(), bytes.size()), error);
  if (!error && !notes_.empty()) file->Write(notes_, error);
}

void LocalBackup::LocalBackUp() {
  if (!window_.save.keeping.BackupActive) return;
  if (window_.chart.Count() < nextIndex_) StoreWasCleared();
  std::error_code error;
  Append(error);
  if (error) {
    TellFailure(error);
  } else if (failing_) {
    TellSuccess();
  }
}

void LocalBackup::SyncToDisk() {
  if (!window_.save.keeping.BackupActive || samplesInFile_ == samplesSynced_) return;
  std::error_code error;
  const std::unique_ptr<File> file =
      session_.host.files.Open(window_.save.keeping.LocalBackupFile, OpenMode::ReadWrite, error);
  if (file && file->Size(error) != ExpectedSize() && !error) {
    lengthIsSure_ = false;
    LocalBackUp();
    return;
  }
  if (file && !error) file->Sync(error);
  if (!error) samplesSynced_ = samplesInFile_;
  if (error) TellFailure(error);
}

bool LocalBackup::IsComplete() const {
  return window_.save.keeping.BackupActive && nextIndex_ == window_.chart.Count();
}

void LocalBackup::StoreWasCleared() {
  if (samplesInFile_ > 0) {
    storeHoldsAll_ = false;
    window_.save.keeping.Mini = true;
  }
  nextIndex_ = 0;
}

std::uint64_t LocalBackup::ExpectedSize() const {
  return frontSize_ + static_cast<std::uint64_t>(samplesInFile_) * layout_.BytesPerSample();
}

void LocalBackup::Append(std::error_code& error) {
  if (layout_.integers && !PendingFitsIntegers()) Widen(error);
  if (error) return;
  // A file without stamps has its header rewritten, which a file open for appending does not allow.
  const OpenMode mode = layout_.timeStamps ? OpenMode::AppendExisting : OpenMode::ReadWrite;
  std::unique_ptr<File> file = session_.host.files.Open(window_.save.keeping.LocalBackupFile, mode, error);
  if (!file) {
    error.clear();
    MakeAnew(error);
    return;
  }
  if (MustLookAtLength()) {
    const std::uint64_t size = file->Size(error);
    if (!error && size != ExpectedSize()) {
      if (!CanBeMended(size)) {
        file.reset();
        MakeAnew(error);
        return;
      }
      Mend(*file, size, error);
    }
    if (!error) lengthIsSure_ = true;
  }
  if (!error) WritePending(*file, error);
}

// Asking at each sample costs a third of the append. A file of stamps that the store could write again can wait for the
// next SyncToDisk.
bool LocalBackup::MustLookAtLength() const {
  return failing_ || !lengthIsSure_ || !storeHoldsAll_ || !layout_.timeStamps;
}

// After a failure a torn sample may stand at the end, which is cut off. Otherwise the file is not the one that was
// left, and is made anew; but while the store could not give the whole of it again, what can be the log's own is kept.
bool LocalBackup::CanBeMended(std::uint64_t size) const {
  if (size < frontSize_) return false;
  return (failing_ && size > ExpectedSize()) || !storeHoldsAll_;
}

bool LocalBackup::PendingFitsIntegers() const {
  const StripChart& chart = window_.chart;
  for (std::int32_t i = nextIndex_; i < chart.Count(); ++i) {
    for (int channel = 0; channel < layout_.channels; ++channel) {
      if (std::abs(chart.GetValue(channel, i)) > kIntegerLimit) return false;
    }
  }
  return true;
}

// A value beyond the integers would be held inside their limits, and where the backup alone has the log it would be
// lost. From here on the log is kept as doubles.
void LocalBackup::Widen(std::error_code& error) {
  const std::filesystem::path& file = window_.save.keeping.LocalBackupFile;
  if (samplesInFile_ > 0 && session_.host.files.FileExists(file)) {
    error = WidenSamples(session_.host.files, file, layout_, frontSize_, samplesInFile_);
  }
  if (error) return;
  layout_.integers = false;
  window_.save.keeping.Form.integers = false;
  session_.Add2SLog(" Values exceed the limits of integers: this log is kept in non-Integer format.");
}

void LocalBackup::WritePending(File& file, std::error_code& error) {
  const std::int32_t count = window_.chart.Count();
  if (!layout_.timeStamps && count > 0) {
    header_.end = window_.chart.GetTime(count - 1);
    const HeaderBytes bytes = EncodeHeader(header_);
    file.Write(std::string_view(bytes.data(), bytes.size()), error);
    if (!error) file.Seek(ExpectedSize(), error);
  }
  const std::size_t stride = layout_.BytesPerSample();
  const auto perPiece = static_cast<std::int32_t>(kCatchUpBytes / stride);
  while (!error && nextIndex_ < count) {
    const std::int32_t piece = std::min(count - nextIndex_, perPiece);
    buffer_.resize(piece * stride);
    EncodeSamples(window_.chart.Samples(), layout_, nextIndex_, piece, buffer_.data());
    file.Write(buffer_, error);
    if (error) break;
    nextIndex_ += piece;
    samplesInFile_ += piece;
  }
  if (!error) return;
  std::error_code ignored;  // what cannot be cut off now is cut off by the next call
  file.Truncate(ExpectedSize(), ignored);
}

void LocalBackup::Mend(File& file, std::uint64_t size, std::error_code& error) {
  if (size < ExpectedSize()) samplesInFile_ = WholeSamples(layout_, size - frontSize_);
  file.Truncate(ExpectedSize(), error);
}

void LocalBackup::MakeAnew(std::error_code& error) {
  FileSystem& files = session_.host.files;
  files.MakeFolders(window_.save.keeping.LocalBackupFile.parent_path(), error);
  if (error) return;
  const std::int32_t last = window_.LastSampleIndex();
  if (!layout_.timeStamps && last >= 0) header_.end = window_.chart.GetTime(last);
  DataFilePlan plan;
  plan.header = header_;
  plan.notesBlock = notes_;
  plan.layout = layout_;
  plan.last = last;
  error = WriteDataFile(files, plan, window_.chart.Samples(), window_.save.keeping.LocalBackupFile);
  if (error) return;
  const bool lostSome = !storeHoldsAll_;
  samplesInFile_ = last + 1;
  nextIndex_ = last + 1;
  storeHoldsAll_ = true;
  lengthIsSure_ = true;
  session_.Add2SLog(lostSome ? " Backup File Was Lost. A New One Holds What Memory Kept."
                             : " Backup File Was Missing. It Has Been Made Anew.");
}

void LocalBackup::TellFailure(const std::error_code& error) {
  if (failing_) return;
  failing_ = true;
  const std::string text = "Backup Failed: " + error.message() + ". The data stay in memory until it can be written.";
  session_.Add2SLog(" " + text);
  session_.Tell("Tarvolt", text);
}

void LocalBackup::TellSuccess() {
  failing_ = false;
  session_.Add2SLog(" Backup Works Again. All Data Are in It.");
}

}  // namespace tarvolt
