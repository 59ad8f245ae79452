// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/alsa_mixer.h"

#include <alsa/asoundlib.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "host/alsa_inputs.h"
#include "host/mixer_map.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

constexpr std::chrono::milliseconds kPatience{1000};

struct CloseMixer {
  void operator()(snd_mixer_t* mixer) const { snd_mixer_close(mixer); }
};

std::vector<std::string> ItemsOf(snd_mixer_elem_t* element) {
  std::vector<std::string> items;
  if (snd_mixer_selem_is_enumerated(element) == 0 || snd_mixer_selem_is_enum_capture(element) == 0) return items;
  const int count = snd_mixer_selem_get_enum_items(element);
  for (int item = 0; item < count; ++item) {
    char name[64] = "";
    if (snd_mixer_selem_get_enum_item_name(element, static_cast<unsigned>(item), sizeof name, name) < 0) *name = 0;
    items.emplace_back(name);
  }
  return items;
}

/// The mixer of a card while a call lasts.
class OpenMixer {
 public:
  explicit OpenMixer(const std::string& card) {
    const std::optional<std::string> name = AlsaControlName(card);
    snd_mixer_t* opened = nullptr;
    if (!name || snd_mixer_open(&opened, 0) < 0) return;
    mixer_.reset(opened);
    if (snd_mixer_attach(opened, name->c_str()) < 0 || snd_mixer_selem_register(opened, nullptr, nullptr) < 0 ||
        snd_mixer_load(opened) < 0) {
      return;
    }
    for (auto* element = snd_mixer_first_elem(opened); element != nullptr; element = snd_mixer_elem_next(element)) {
      if (snd_mixer_selem_is_active(element) == 0) continue;
      handles_.push_back(element);
      elements_.push_back({snd_mixer_selem_get_name(element), snd_mixer_selem_has_capture_volume(element) != 0,
                           snd_mixer_selem_has_capture_switch(element) != 0, ItemsOf(element)});
    }
    routes_ = MapMixer(elements_);
  }

  const MixerRoutes& Routes() const { return routes_; }

  /// Null without one.
  const MixerRoute* Route(int source) const {
    const bool there = source >= 0 && source < kMixerSources && routes_[source];
    return there ? &*routes_[source] : nullptr;
  }

  snd_mixer_elem_t* Handle(int place) const { return handles_[static_cast<std::size_t>(place)]; }

 private:
  std::unique_ptr<snd_mixer_t, CloseMixer> mixer_;
  std::vector<snd_mixer_elem_t*> handles_;
  std::vector<MixerElement> elements_;
  MixerRoutes routes_;
};

struct Range {
  long low = 0;
  long high = 0;
};

std::optional<Range> RangeOf(snd_mixer_elem_t* element) {
  Range range;
  if (snd_mixer_selem_get_capture_volume_range(element, &range.low, &range.high) < 0) return std::nullopt;
  return range.high > range.low ? std::optional(range) : std::nullopt;
}

MixerInput InputOf(const OpenMixer& mixer, const MixerRoute& route) {
  MixerInput input;
  input.there = true;
  input.name = AnsiFromUtf8(route.name);
  const std::optional<Range> range = route.volume < 0 ? std::nullopt : RangeOf(mixer.Handle(route.volume));
  long value = 0;
  if (!range || snd_mixer_selem_get_capture_volume(mixer.Handle(route.volume), SND_MIXER_SCHN_FRONT_LEFT, &value) < 0) {
    return input;
  }
  input.hasVolume = true;
  const double part = static_cast<double>(value - range->low) / static_cast<double>(range->high - range->low);
  input.volume = static_cast<int>(std::lround(part * 100));
  return input;
}

MixerInputs InputsOf(const std::string& card) {
  const OpenMixer mixer(card);
  MixerInputs inputs;
  for (int source = 0; source < kMixerSources; ++source) {
    if (const MixerRoute* route = mixer.Route(source)) inputs[source] = InputOf(mixer, *route);
  }
  return inputs;
}

// The switches of the others go off first: some cards let only one be on, and some mix all that are.
bool CaptureFrom(const std::string& card, int source) {
  const OpenMixer mixer(card);
  const MixerRoute* chosen = mixer.Route(source);
  if (chosen == nullptr) return false;
  for (const auto& route : mixer.Routes()) {
    if (!route || route->captureSwitch < 0 || route->captureSwitch == chosen->captureSwitch) continue;
    snd_mixer_selem_set_capture_switch_all(mixer.Handle(route->captureSwitch), 0);
  }
  bool good = true;
  if (chosen->captureSwitch >= 0) {
    good = snd_mixer_selem_set_capture_switch_all(mixer.Handle(chosen->captureSwitch), 1) >= 0;
  }
  if (chosen->chooser < 0) return good;
  snd_mixer_elem_t* chooser = mixer.Handle(chosen->chooser);
  const auto item = static_cast<unsigned>(chosen->item);
  const bool left = snd_mixer_selem_set_enum_item(chooser, SND_MIXER_SCHN_FRONT_LEFT, item) >= 0;
  snd_mixer_selem_set_enum_item(chooser, SND_MIXER_SCHN_FRONT_RIGHT, item);  // few cards have one for each side
  return good && left;
}

bool PutVolume(const std::string& card, int source, int volume) {
  const OpenMixer mixer(card);
  const MixerRoute* route = mixer.Route(source);
  if (route == nullptr || route->volume < 0) return false;
  snd_mixer_elem_t* element = mixer.Handle(route->volume);
  const std::optional<Range> range = RangeOf(element);
  if (!range) return false;
  const double part = std::clamp(volume, 0, 100) / 100.0;
  const long value = range->low + std::lround(part * static_cast<double>(range->high - range->low));
  return snd_mixer_selem_set_capture_volume_all(element, value) >= 0;
}

/// What `question` describes the mixer; nothing when it does not answer.
template <class Answer>
std::optional<Answer> AskMixer(DriverCalls& drivers, const std::string& card, std::function<Answer()> question) {
  return drivers.Ask("mixer of " + card, kPatience, std::move(question));
}

}  // namespace

MixerInputs AlsaMixer::Inputs(const std::string& card) {
  return AskMixer<MixerInputs>(drivers_, card, [card] { return InputsOf(card); }).value_or(MixerInputs());
}

bool AlsaMixer::Select(const std::string& card, int source) {
  return AskMixer<bool>(drivers_, card, [=] { return CaptureFrom(card, source); }).value_or(false);
}

bool AlsaMixer::SetVolume(const std::string& card, int source, int volume) {
  return AskMixer<bool>(drivers_, card, [=] { return PutVolume(card, source, volume); }).value_or(false);
}

}  // namespace tarvolt
