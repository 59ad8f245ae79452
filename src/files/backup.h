// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "files/format/sample_layout.h"
#include "model/chart_window.h"
#include "model/run_listener.h"
#include "model/session.h"

namespace tarvolt {

/// The disk backup of a run: a data file that grows with every accepted sample and is complete at every moment.
/// A write that fails is reported once and cut back to the last whole sample; the samples it missed are still in the
/// store and are written with the next one that succeeds. A backup file that vanished is made anew from the store by
/// the next append; one that was cut or exchanged by the next SyncToDisk, as asking for its length each time costs too
/// much.
class LocalBackup final : public RunListener {
 public:
  /// The backup of the window's runs; touches no file yet.
  LocalBackup(Session& session, ChartWindow& window);

  void LogBegan() override { InitLocalBU(); }
  void SampleFinished(const FinishedSample&) override { LocalBackUp(); }

  /// A power cut while the log is being saved costs nothing.
  void LogEnded(LogEnd) override { SyncToDisk(); }

  /// Starts the backup of a new log, removing the old file; one that holds samples nobody has saved is moved to the
  /// recovery folder, and when it cannot be, this log has no backup. With DiskBackUp off only marks it inactive. The
  /// form of the samples is that of the log.
  void InitLocalBU();

  /// Appends the samples of the store that the file does not hold yet; opens and closes the file.
  void LocalBackUp();

  /// Returns when the samples appended so far are on the disk itself, so that a power cut costs only what comes after.
  /// Does nothing when none has come since the last call. Notices a file that is not the one that was left.
  void SyncToDisk();

  /// True when every sample of the store is in the file.
  bool IsComplete() const;

  /// The store was emptied although the log goes on: the next sample of the store follows those in the file.
  void StoreWasCleared();

 private:
  std::filesystem::path ReplaceableFile() const;
  std::uint64_t ExpectedSize() const;
  void WriteFront(std::error_code& error);
  void Append(std::error_code& error);
  void WritePending(File& file, std::error_code& error);
  bool PendingFitsIntegers() const;
  void Widen(std::error_code& error);
  bool MustLookAtLength() const;
  bool CanBeMended(std::uint64_t size) const;
  void Mend(File& file, std::uint64_t size, std::error_code& error);
  void MakeAnew(std::error_code& error);
  void TellFailure(const std::error_code& error);
  void TellSuccess();

  Session& session_;
  ChartWindow& window_;
  SampleLayout layout_;
  DataFileHeader header_;
  std::string notes_;
  std::string buffer_;              ///< kept between calls, so that a sample costs no allocation
  std::uint64_t frontSize_ = 0;     ///< bytes before the first sample
  std::int64_t samplesInFile_ = 0;  ///< whole samples that the file must hold
  std::int64_t samplesSynced_ = 0;  ///< whole samples that were on the disk at the last SyncToDisk
  std::int32_t nextIndex_ = 0;      ///< first sample of the store that the file lacks
  std::filesystem::path file_;      ///< the last that this object began; empty before
  bool storeHoldsAll_ = true;       ///< the store has everything that is in the file
  bool lengthIsSure_ = true;        ///< the file had the length that it should have at the last look
  bool failing_ = false;            ///< reported already; a torn sample may stand at the end of the file
};

}  // namespace tarvolt
