// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// The newest samples of the sound input, interleaved, for the WAV recorder. One entry is always unused between the
/// newest and the oldest.
struct SoundRing {
  std::vector<std::int16_t> PreBufferRing;
  std::int32_t RingRead = 0;
  std::int32_t RingWrite = 0;  ///< the newest sample; 0 and RingRead 0 before the first
};

/// Samples gathered for the spectrum window. The sides of a mono stream have an index each, since the left one leaves
/// out what follows a transform in a buffer and the right one does not.
struct SpectrumFeed {
  bool SpectrumActive = false;  ///< the window wants samples
  std::vector<double> SpectrumBufL;
  std::vector<double> SpectrumBufR;
  std::int32_t SpectrumIndex = 0;
  std::int32_t SpectrumIndexR = 0;  ///< of the right side of a mono stream, which is gathered in a pass of its own
  std::int32_t SpectrumSize = 0;    ///< samples of a transform; both arrays are as long

  /// What has gathered belongs to no whole transform: the next sample does not follow on the last.
  void BeginAnew() {
    SpectrumIndex = 0;
    SpectrumIndexR = 0;
  }

  /// Takes full arrays. `side`: 0 left of a mono stream, 1 right of a mono stream, 2 both. May yield.
  std::function<void(int side, const std::vector<double>& left, const std::vector<double>& right)> receive;
};

/// The highest samples for a level meter, which must not miss a short one between two looks.
struct LevelFeed {
  bool active = false;     ///< a meter is on the screen
  int buffers = 0;         ///< since it looked last
  std::int32_t highL = 0;  ///< the size of the highest sample of the left side in them, background and all
  std::int32_t highR = 0;

  /// The meter has looked.
  void BeginAnew() {
    buffers = 0;
    highL = 0;
    highR = 0;
  }
};

/// The stretches of a run for which no sound came.
struct SoundGaps {
  int count = 0;            ///< of those that are over
  double seconds = 0;       ///< in all of them
  TimeStamp lastEnd = 0;    ///< log time
  TimeStamp lostSince = 0;  ///< log time, of the one that goes on; 0 when sound comes
};

/// What the sound input of a window has brought. Written by the buffer handler, read by the ticks, the meters, the
/// calibration and the data source.
struct SoundState {
  bool BufferBusy = false;           ///< a buffer is being worked on
  bool Awaited = false;              ///< a start waits for the first buffer
  bool MeasuringBackground = false;  ///< the background is not subtracted

  /// Index 1, 2, 3: sums of the Peak, Average and Power readings since the last read of the channels. The others are
  /// not filled (meant).
  std::array<double, 9> SoundAccumL{};
  std::array<double, 9> SoundAccumR{};
  float SoundBufCountL = 0;  ///< buffers in the sums
  float SoundBufCountR = 0;

  // Readings of the newest buffer, in sample units.
  double LastPeakL = 0;
  double LastPeakR = 0;
  double LastAvgL = 0;
  double LastAvgR = 0;
  double CrossCorrelation = 0;  ///< sample units squared

  SoundRing ring;
  SpectrumFeed spectrum;
  LevelFeed levels;
  SoundGaps gaps;
  std::int64_t overRuns = 0;  ///< buffers lost in this run

  /// Empties the sums and the counts, as each read of the channels does at its end.
  void ClearAccumulators() {
    SoundAccumL.fill(0);
    SoundAccumR.fill(0);
    SoundBufCountL = 0;
    SoundBufCountR = 0;
  }

  /// Blanks the readings of the newest buffer.
  void ClearLastReadings() {
    CrossCorrelation = 0;
    LastPeakL = 0;
    LastPeakR = 0;
    LastAvgL = 0;
    LastAvgR = 0;
  }
};

}  // namespace tarvolt
