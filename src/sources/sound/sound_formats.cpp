// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_formats.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

constexpr WaveFormat kFormats[] = {
    {44100, 16, true},  {44100, 16, false},  {48000, 16, true},  {48000, 16, false},   // 0 to 3
    {22050, 16, true},  {22050, 16, false},  {11025, 16, true},  {11025, 16, false},   // 4 to 7
    {8000, 16, true},   {8000, 16, false},   {16000, 16, true},  {16000, 16, false},   // 8 to 11
    {32000, 16, true},  {32000, 16, false},  {96000, 16, true},  {96000, 16, false},   // 12 to 15
    {192000, 16, true}, {192000, 16, false}, {88200, 16, true},  {88200, 16, false},   // 16 to 19
    {44100, 8, true},   {44100, 8, false},   {22050, 8, true},   {22050, 8, false},    // 20 to 23
    {11025, 8, true},   {11025, 8, false},   {8000, 8, true},    {8000, 8, false},     // 24 to 27
    {176400, 16, true}, {176400, 16, false}, {64000, 16, true},  {64000, 16, false},   // 28 to 31
    {24000, 16, true},  {24000, 16, false},  {12000, 16, true},  {12000, 16, false},   // 32 to 35
    {352800, 16, true}, {352800, 16, false}, {384000, 16, true}, {384000, 16, false},  // 36 to 39
    {5512, 16, true},   {5512, 16, false},   {128000, 16, true}, {128000, 16, false},  // 40 to 43
    {705600, 16, true}, {705600, 16, false}, {768000, 16, true}, {768000, 16, false},  // 44 to 47
};

}  // namespace

std::span<const WaveFormat> SoundFormats() {
  return kFormats;
}

const WaveFormat& SoundFormat(std::int32_t sWavFormat) {
  const bool known = sWavFormat >= 0 && sWavFormat < static_cast<std::int32_t>(std::size(kFormats));
  return kFormats[known ? sWavFormat : 0];
}

std::int32_t SoundFormatRow(const WaveFormat& format) {
  const auto found = std::find(std::begin(kFormats), std::end(kFormats), format);
  return found == std::end(kFormats) ? -1 : static_cast<std::int32_t>(found - std::begin(kFormats));
}

std::string SoundFormatText(const WaveFormat& format) {
  return NumberText(std::int64_t{format.samplesPerSecond}) + " Hz " + NumberText(std::int64_t{format.bits}) + " Bit " +
         (format.stereo ? "Stereo" : "Mono");
}

}  // namespace tarvolt
