// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/common/sound_list.h"

#include <iomanip>
#include <ostream>

#include "config/settings.h"
#include "sources/sound/sound_formats.h"
#include "text/ansi.h"

namespace tarvolt {

void PrintSoundInputs(WaveInDevices& inputs, std::ostream& out) {
  const std::vector<std::string> names = inputs.List();
  if (names.empty()) out << kNoSoundCard << "\n";
  for (const std::string& name : names) {
    out << Utf8FromAnsi(name) << "\n";
    const std::vector<WaveFormat> formats = inputs.Formats(name, SoundFormats());
    if (formats.empty()) out << "    in use, or it does not answer\n";
    for (const WaveFormat& format : formats) {
      out << std::setw(6) << SoundFormatRow(format) << "  " << SoundFormatText(format) << "\n";
    }
  }
}

}  // namespace tarvolt
