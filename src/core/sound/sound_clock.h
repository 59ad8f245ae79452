// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/run/chart_run.h"
#include "core/run/sample_pipeline.h"

namespace tarvolt {

/// What the buffers of the sound input do to a run beyond their readings: with Pacer::Sound they are its clock, and an
/// input that comes to its end ends the run.
class SoundClock {
 public:
  /// Works on parts that outlive it, and takes the events of the recorder's sound input.
  SoundClock(Recorder& recorder, ChartRun& chartRun, SamplePipeline& pipeline);

 private:
  void TakeBuffer(double waited);
  void BeginRun();
  void InputEnded();

  Recorder& recorder_;
  ChartRun& chartRun_;
  SamplePipeline& pipeline_;
};

}  // namespace tarvolt
