// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/mixer_map.h"

#include <algorithm>

namespace tarvolt {
namespace {

// The names that drivers give to the inputs, the likeliest first.
const std::array<std::vector<std::string>, kMixerSources>& Names() {
  static const std::array<std::vector<std::string>, kMixerSources> kNames = {{
      {"Line", "Line In", "Rear Line", "Front Line", "Aux", "Line/Mic", "Dock Line"},
      {"Mic", "Front Mic", "Rear Mic", "Internal Mic", "Headset Mic", "Headphone Mic", "Dock Mic", "Microphone"},
      {"Wave", "PCM", "Digital"},
      {"Stereo Mix", "Mix", "Mixed", "Mixer", "Loopback", "What U Hear"},
  }};
  return kNames;
}

constexpr const char* kCommonVolume = "Capture";

int PlaceOf(std::span<const MixerElement> elements, const std::string& name, bool MixerElement::*has) {
  const auto found = std::find_if(elements.begin(), elements.end(),
                                  [&](const MixerElement& element) { return element.name == name && element.*has; });
  return found == elements.end() ? -1 : static_cast<int>(found - elements.begin());
}

int CommonVolume(std::span<const MixerElement> elements) {
  return PlaceOf(elements, kCommonVolume, &MixerElement::captureVolume);
}

std::optional<MixerRoute> OwnElement(std::span<const MixerElement> elements, const std::string& name) {
  MixerRoute route{name, PlaceOf(elements, name, &MixerElement::captureVolume),
                   PlaceOf(elements, name, &MixerElement::captureSwitch)};
  if (route.volume < 0 && route.captureSwitch < 0) return std::nullopt;
  if (route.volume < 0) route.volume = CommonVolume(elements);
  return route;
}

std::optional<MixerRoute> ItemOfChooser(std::span<const MixerElement> elements, const std::string& name) {
  for (std::size_t place = 0; place < elements.size(); ++place) {
    const std::vector<std::string>& items = elements[place].items;
    const auto found = std::find(items.begin(), items.end(), name);
    if (found == items.end()) continue;
    return MixerRoute{name, CommonVolume(elements), -1, static_cast<int>(place),
                      static_cast<int>(found - items.begin())};
  }
  return std::nullopt;
}

// The only input of a card. Its switch is never touched: there is nothing to choose.
std::optional<MixerRoute> OnlyInput(std::span<const MixerElement> elements) {
  for (std::size_t place = 0; place < elements.size(); ++place) {
    if (elements[place].captureVolume) return MixerRoute{elements[place].name, static_cast<int>(place)};
  }
  return std::nullopt;
}

}  // namespace

MixerRoutes MapMixer(std::span<const MixerElement> elements) {
  MixerRoutes routes;
  for (int source = 0; source < kMixerSources; ++source) {
    for (const auto find : {OwnElement, ItemOfChooser}) {
      for (const std::string& name : Names()[source]) {
        if (!routes[source]) routes[source] = find(elements, name);
      }
    }
  }
  const bool none = std::none_of(routes.begin(), routes.end(), [](const auto& route) { return route.has_value(); });
  if (none) routes[0] = OnlyInput(elements);
  return routes;
}

}  // namespace tarvolt
