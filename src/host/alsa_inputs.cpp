// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/alsa_inputs.h"

#include <alsa/asoundlib.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "host/alsa_params.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kServerInput = "default: Sound server";
constexpr std::chrono::milliseconds kPatience{1000};

// The reasons of a failure come back as numbers too, and those are reported.
void SayNothing(const char*, int, const char*, int, const char*, ...) {}

bool Exists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool HasCards() {
  return Exists("/proc/asound/cards");
}

// Where the servers of today wait for their clients.
bool HasServer() {
  if (!Environment("PULSE_SERVER").empty()) return true;
  const std::string own = Environment("XDG_RUNTIME_DIR");
  const std::string folder = own.empty() ? "/run/user/" + NumberText(std::int64_t{getuid()}) : own;
  return Exists(folder + "/pulse/native") || Exists(folder + "/pipewire-0");
}

struct CloseControl {
  void operator()(snd_ctl_t* control) const { snd_ctl_close(control); }
};

/// The capture devices of one card.
void AddCard(int card, std::vector<std::string>& names) {
  snd_ctl_t* opened = nullptr;
  const std::string controlName = "hw:" + NumberText(std::int64_t{card});
  if (snd_ctl_open(&opened, controlName.c_str(), SND_CTL_NONBLOCK) < 0) return;
  const std::unique_ptr<snd_ctl_t, CloseControl> control(opened);
  snd_ctl_card_info_t* cardInfo = nullptr;
  snd_ctl_card_info_alloca(&cardInfo);
  if (snd_ctl_card_info(opened, cardInfo) < 0) return;
  snd_pcm_info_t* pcmInfo = nullptr;
  snd_pcm_info_alloca(&pcmInfo);
  for (int device = -1; snd_ctl_pcm_next_device(opened, &device) == 0 && device >= 0;) {
    snd_pcm_info_set_device(pcmInfo, static_cast<unsigned>(device));
    snd_pcm_info_set_subdevice(pcmInfo, 0);
    snd_pcm_info_set_stream(pcmInfo, SND_PCM_STREAM_CAPTURE);
    if (snd_ctl_pcm_info(opened, pcmInfo) < 0) continue;
    names.push_back(AnsiFromUtf8(std::string(snd_ctl_card_info_get_id(cardInfo)) + "," +
                                 NumberText(std::int64_t{device}) + ": " + snd_ctl_card_info_get_name(cardInfo) + ", " +
                                 snd_pcm_info_get_name(pcmInfo)));
  }
}

}  // namespace

std::optional<std::string> AlsaPcmName(const std::string& name) {
  const std::string part = name.substr(0, name.find(':'));
  if (part == "default") return part;
  const std::size_t comma = part.rfind(',');
  if (comma == std::string::npos || comma == 0) return std::nullopt;
  const std::string id = part.substr(0, comma);
  const std::string device = part.substr(comma + 1);
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isOfId = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-'; };
  const bool good = !device.empty() && device.size() <= 3 && std::all_of(device.begin(), device.end(), isDigit) &&
                    std::all_of(id.begin(), id.end(), isOfId);
  if (!good) return std::nullopt;
  return "plughw:CARD=" + id + ",DEV=" + device;
}

std::optional<std::string> AlsaControlName(const std::string& name) {
  const std::optional<std::string> pcm = AlsaPcmName(name);
  if (!pcm) return std::nullopt;
  if (*pcm == "default") return HasServer() ? pcm : std::nullopt;
  if (!HasCards()) return std::nullopt;
  const std::string part = name.substr(0, name.find(':'));
  return "hw:CARD=" + part.substr(0, part.rfind(','));
}

AlsaInputs::AlsaInputs(DriverCalls& drivers) : drivers_(drivers) {
  snd_lib_error_set_handler(SayNothing);
}

// A server that is slow, as when the machine has just been started, is there: no other card may take its place.
bool AlsaInputs::ServerAnswers() const {
  const std::function<bool()> opens = [] { return OpenAlsaPcm("default") != nullptr; };
  return drivers_.Ask("default", kPatience, opens).value_or(true);
}

std::vector<std::string> AlsaInputs::List() const {
  std::vector<std::string> names;
  if (HasCards()) {
    for (int card = -1; snd_card_next(&card) == 0 && card >= 0;) AddCard(card, names);
  }
  if (HasServer() && ServerAnswers()) names.emplace_back(kServerInput);
  return names;
}

bool AlsaInputs::IsThere(const std::string& name) const {
  const std::optional<std::string> pcm = AlsaPcmName(name);
  if (!pcm) return false;
  if (*pcm == "default") return HasServer() && ServerAnswers();
  const std::string id = name.substr(0, name.rfind(',', name.find(':')));
  return HasCards() && snd_card_get_index(id.c_str()) >= 0;
}

std::vector<WaveFormat> AlsaInputs::Formats(const std::string& name, std::span<const WaveFormat> asked) const {
  const std::optional<std::string> pcmName = AlsaPcmName(name);
  if (!pcmName) return {};
  const std::function<std::vector<WaveFormat>()> offers = [pcmName = *pcmName,
                                                           formats = std::vector(asked.begin(), asked.end())] {
    const AlsaPcm pcm = OpenAlsaPcm(pcmName);
    std::vector<WaveFormat> offered;
    if (!pcm) return offered;
    std::copy_if(formats.begin(), formats.end(), std::back_inserter(offered),
                 [&](const WaveFormat& format) { return AlsaOffers(*pcm, format); });
    return offered;
  };
  return drivers_.Ask(*pcmName, kPatience, offers).value_or(std::vector<WaveFormat>());
}

}  // namespace tarvolt
