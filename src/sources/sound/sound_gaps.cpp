// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_gaps.h"

#include <cstdint>
#include <string>

#include "text/number.h"
#include "timebase/time_base.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

std::string MomentText(TimeStamp stamp) {
  return FormatDate(stamp, "YYYY-MM-DD HH:nn:ss");
}

}  // namespace

void EndSoundGap(Clock& clock, double seconds, ChartWindow& window) {
  SoundGaps& gaps = window.sound.gaps;
  ++gaps.count;
  gaps.seconds += seconds;
  gaps.lastEnd = CalcTime(clock, window.run.time);
  gaps.lostSince = 0;
  AddSoundGaps(window);
}

void AddSoundGaps(ChartWindow& window) {
  const SoundGaps& gaps = window.sound.gaps;
  std::string text;
  if (gaps.count > 0) {
    text = NumberText(std::int64_t{gaps.count}) + " since the start, " + FormatNumber(gaps.seconds, "##0.0") +
           " seconds in all, the last until " + MomentText(gaps.lastEnd);
  }
  if (gaps.lostSince > 0) text += std::string(text.empty() ? "" : "; ") + "lost since " + MomentText(gaps.lostSince);
  if (!text.empty()) window.metadata.AddToMetaData("Sound Gaps: ", text);
}

}  // namespace tarvolt
