// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/format_in_use.h"

#include <optional>

#include "config/settings_table.h"
#include "sources/sound/sound_formats.h"

namespace tarvolt {

WaveFormat SoundFormatInUse(const Session& session, const SoundSettings& sound) {
  std::optional<WaveFormat> fixed;
  if (HasSoundCard(sound)) fixed = session.host.sound.FixedFormat(sound.SoundCardName);
  return fixed.value_or(SoundFormat(sound.sWavFormat));
}

std::string FormatsOffered(const Session& session, const std::string& card) {
  std::string text;
  for (const WaveFormat& format : session.host.sound.Formats(card, SoundFormats())) {
    text += (text.empty() ? "" : ", ") + SoundFormatText(format);
  }
  return text;
}

}  // namespace tarvolt
