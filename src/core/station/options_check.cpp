// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/options_check.h"

#include <algorithm>

#include "config/settings_table.h"
#include "model/channel_table.h"
#include "sources/source_table.h"
#include "text/ansi.h"
#include "text/number.h"
#include "timebase/position.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

constexpr const char* kTitle = "Tarvolt";
constexpr const char* kUnknown = "unknown";
constexpr double kHoursPerDay = 24;
constexpr int kHighestPort = 65535;

using Problem = std::optional<OptionsProblem>;
using Problems = std::vector<OptionsProblem>;

Problem Refusal(const std::string& text, const std::string& key) {
  return OptionsProblem{kTitle, text, key};
}

void Add(Problems& problems, const std::string& text, const std::string& key) {
  problems.push_back({kTitle, text, key});
}

bool IsBlank(std::string_view text) {
  return Trim(text).empty();
}

std::string WithPoint(std::string_view text) {
  return ReplaceAll(text, ",", ".");
}

// A letter would be passed over in silence, and with it a word such as "S" that was meant.
bool IsPosition(std::string_view text) {
  constexpr std::string_view kAllowed = "0123456789:.,+- ";
  return text.find_first_of("0123456789") != std::string_view::npos &&
         text.find_first_not_of(kAllowed) == std::string_view::npos;
}

bool IsUnset(std::string_view text) {
  return IsBlank(text) || EqualNoCase(Trim(text), kUnknown);
}

Problem ReadLatitude(const std::string& text, Settings& draft) {
  const bool unset = IsUnset(text);
  if (!unset && (!IsPosition(text) || CheckLatitude(text).empty())) {
    return OptionsProblem{"Latitide Error.", "There is an error in your Latitude format.", "UserLat"};
  }
  draft.place.UserLat = unset ? kUnsetPosition : ParseLatitude(text);
  return {};
}

Problem ReadLongitude(const std::string& text, Settings& draft) {
  const bool unset = IsUnset(text);
  if (!unset && (!IsPosition(text) || CheckLongitude(text).empty())) {
    return OptionsProblem{"Longitude Error.", "There is an error in your Longitude format.", "UserLng"};
  }
  draft.place.UserLng = unset ? kUnsetPosition : LongitudeFromEntry(text, draft.place.DisplayWest);
  return {};
}

Problem ReadNumber(const std::string& key, const std::string& text, Settings& draft) {
  if (IsBlank(text)) return Refusal("A number is needed here.", key);
  if (!HoldsNumber(WithPoint(text))) return Refusal("\"" + text + "\" is not a number.", key);
  if (key == "MaxDuration") {
    draft.timing.MaxDuration = ValWithComma(text) / kHoursPerDay;
  } else {
    ApplySetting(draft, key, WithPoint(text));
  }
  return {};
}

Problem ReadText(const std::string& key, const std::string& text, Settings& draft) {
  if (key == "UserLat") return ReadLatitude(text, draft);
  if (key == "UserLng") return ReadLongitude(text, draft);
  if (KindOfSetting(key) == SettingKind::Number) return ReadNumber(key, text, draft);
  ApplySetting(draft, key, text);
  return {};
}

void CheckSourceRows(const Settings& draft, const SoundFacts& sound, Problems& problems) {
  const RowRefusal refusal = RefuseInOptions(draft, sound.available);
  if (refusal.text.empty()) return;
  Add(problems, refusal.text, "Dsrc" + NumberText(std::int64_t{refusal.row}));
}

// Hours typed for one minute are a little short of it or over, as their last digit goes.
bool IsAMinute(double days) {
  constexpr double kMinutesPerDay = 1440;
  constexpr double kSlack = 1e-6;
  return days * kMinutesPerDay >= 1 - kSlack;
}

void CheckTiming(const Settings& draft, Problems& problems) {
  constexpr double kLongestPeriod = 86'400'000;  // milliseconds: a day
  constexpr double kWidestChart = 31'622'400;    // seconds: a leap year
  if (!(draft.timing.SampleRate >= 10)) {
    Add(problems, "Sample Rate must be 10 milliseconds or greater.", "SampleRate");
  }
  if (draft.timing.SampleRate > kLongestPeriod) {
    Add(problems, "The sample period can be a day at most: 86400000 milliseconds.", "SampleRate");
  }
  if (draft.timing.ChartWidth > kWidestChart) {
    Add(problems, "The chart can be a year wide at most: 31622400 seconds.", "ChartWidth");
  }
  if (draft.timing.MaxArrayCount < 10) Add(problems, "Max Samples must be at least 10", "MaxArrayCount");
  if (!IsAMinute(draft.timing.MaxDuration)) {
    Add(problems, "Max duration must be set to at least one minute.", "MaxDuration");
  }
  if (draft.timing.UseRestartTime && !ParseHMS(draft.timing.RestartTime)) {
    Add(problems, "The restart time must be a time of day in the form 00:00:00.", "RestartTime");
  }
}

void CheckLook(const Settings& draft, Problems& problems) {
  constexpr int kMostDecimals = 12;
  if (draft.chart.YAxisLabelPrecision >= 0 && draft.chart.YAxisLabelPrecision <= kMostDecimals) return;
  Add(problems, "The y axis can have 0 to 12 decimals.", "YAxisLabelPrecision");
}

void CheckSound(const Settings& draft, Problems& problems) {
  for (const auto& [value, key] :
       {std::pair(draft.card.PwrMultiL, "PwrMultiL"), std::pair(draft.card.PwrMultiR, "PwrMultiR")}) {
    if (value == 0) Add(problems, "Cannot set the Power Detection Factor to zero.", key);
  }
  if (draft.card.SCTadjust > 0.5 && draft.card.SCTadjust < 1.5) return;
  Add(problems, "Sound Card Timing Correction factor must be greater than 0.5 and less than 1.5.", "SCTadjust");
}

bool IsPort(std::int32_t port) {
  return port >= 1 && port <= kHighestPort;
}

void CheckPorts(const Settings& draft, Problems& problems) {
  constexpr int kHighestClientPort = 32000;
  const std::string words = "A port is a number from 1 to 65535.";
  if (!IsPort(draft.net.LocalServerPort)) Add(problems, words, "LocalServerPort");
  const bool fits = draft.net.LocalClientPort >= 1 && draft.net.LocalClientPort <= kHighestClientPort;
  if (!fits && !draft.net.AutoSelectClientPort) {
    Add(problems,
        "Please input a Client Port value between 1 and 32000. \nAvoid numbers near your Server Port: '" +
            NumberText(std::int64_t{draft.net.LocalServerPort}),
        "LocalClientPort");
  }
  if (!IsPort(draft.uds.UDSport)) Add(problems, words, "UDSport");
  if (!IsBlank(draft.uds.TVudsPort) && !IsPort(ValLong(draft.uds.TVudsPort))) Add(problems, words, "TVudsPort");
}

// Two detectors of one side are two things; any other input that stands twice is mostly a slip.
void WarnOfDoubles(const Settings& draft, Problems& warnings) {
  const auto& rows = draft.channels.Dsrc;
  for (int row = 1; row < ActiveChannels(draft); ++row) {
    for (int other = 0; other < row; ++other) {
      const bool isSide = rows[row] == kSoundLeft || rows[row] == kSoundRight;
      const bool differs = isSide && draft.channels.Detection[row] != draft.channels.Detection[other];
      if (rows[row] != rows[other] || IsEquation(rows[row]) || differs) continue;
      Add(warnings,
          "Warning: channels " + NumberText(std::int64_t{other + 1}) + " and " + NumberText(std::int64_t{row + 1}) +
              " both record " + SourceName(rows[row]) + ".",
          "Dsrc" + NumberText(std::int64_t{row}));
      break;
    }
  }
}

}  // namespace

std::string OptionText(const Settings& settings, std::string_view key) {
  if (key == "MaxDuration") return NumberText(settings.timing.MaxDuration * kHoursPerDay);
  if (key == "SaveIF") return NumberText(std::int64_t{(settings.files.SaveIF > 0) - (settings.files.SaveIF < 0)});
  if (key == "UserLat")
    return settings.place.UserLat <= kUnsetPosition ? kUnknown : FormatLatitude(settings.place.UserLat);
  if (key == "UserLng") {
    std::string text = LongitudeForDisplay(settings.place.UserLng, settings.place.DisplayWest);
    const std::size_t side = text.find(' ');  // the letter stands beside the field
    return text.substr(0, side);
  }
  return SettingText(settings, key).value_or("");
}

std::optional<OptionsProblem> ReadOptionTexts(const OptionTexts& texts, Settings& draft) {
  // The sense of the longitude must be known before the longitude, wherever it stands.
  for (const auto& [key, text] : texts) {
    if (KindOfSetting(key) == SettingKind::Flag) ApplySetting(draft, key, text);
  }
  for (const auto& [key, text] : texts) {
    if (auto problem = ReadText(key, text, draft)) return problem;
  }
  return {};
}

std::vector<OptionsProblem> LiftOptions(Settings& draft) {
  Problems lifted;
  const auto lift = [&](auto& number, auto least, const std::string& key) {
    if (number >= least) return;
    Add(lifted,
        key + " was lifted from " + NumberText(static_cast<double>(number)) + " to " +
            NumberText(static_cast<double>(least)) + ", the least that it can be.",
        key);
    number = least;
  };
  lift(draft.timing.vAvg, 1, "vAvg");
  lift(draft.timing.ClientAvg, 1, "ClientAvg");
  lift(draft.timing.ChartUpdateRate, 1, "ChartUpdateRate");
  lift(draft.timing.ClientUpdateRate, 1, "ClientUpdateRate");
  lift(draft.timing.ChartWidth, 1.0, "ChartWidth");
  lift(draft.net.ConnectionTimeOut, std::int16_t{20}, "ConnectionTimeOut");
  lift(draft.timing.AvgSamplingPeriod, std::int16_t{1}, "AvgSamplingPeriod");
  return lifted;
}

std::vector<OptionsProblem> CheckOptions(const Settings& draft, const SoundFacts& sound) {
  Problems problems;
  CheckSourceRows(draft, sound, problems);
  CheckTiming(draft, problems);
  CheckLook(draft, problems);
  CheckSound(draft, problems);
  CheckPorts(draft, problems);
  return problems;
}

std::vector<OptionsProblem> OptionWarnings(const Settings& before, const Settings& draft, const SoundFacts& sound) {
  std::vector<OptionsProblem> warnings;
  const SourcesInUse sources = FindSourcesInUse(draft.channels.Dsrc);
  const bool isMono = Upper(sound.format).find("MONO") != std::string::npos;
  if (isMono && sources.SoundLeftInUse && sources.SoundRightInUse) {
    warnings.push_back({kTitle,
                        "Warning: You have selected right and left channel audio data sources but have selected a mono "
                        "Sound format.",
                        "Dsrc0"});
  }
  const bool hasProduct = std::count(draft.channels.Dsrc.begin(), draft.channels.Dsrc.end(), kCrossCorrelation) > 0;
  if (isMono && hasProduct) {
    warnings.push_back({kTitle,
                        "Warning: Cross Correlation needs both sides, but the Sound format is mono: the channel keeps "
                        "its last value.",
                        "Dsrc0"});
  }
  if (draft.channels.Dsrc != before.channels.Dsrc) WarnOfDoubles(draft, warnings);
  if (draft.timing.NoTimeStamps && !before.timing.NoTimeStamps) {
    warnings.push_back(
        {kTitle,
         "Warning: Files saved without time stamps cannot be read by versions before 1.2.8, and their samples are "
         "taken to be evenly spaced.",
         "NoTimeStamps"});
  }
  return warnings;
}

}  // namespace tarvolt
