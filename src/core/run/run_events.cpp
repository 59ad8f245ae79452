// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/run_events.h"

#include <exception>

namespace tarvolt {

template <class Event>
void RunEvents::Offer(Event event) {
  for (Entry& entry : listeners_) {
    try {
      event(*entry.listener);
    } catch (const std::exception& error) {
      if (!entry.reported) log_.Add2SLog("The " + entry.name + " failed: " + error.what());
      entry.reported = true;
    }
  }
}

void RunEvents::LogBegan() {
  for (Entry& entry : listeners_) entry.reported = false;
  Offer([](RunListener& listener) { listener.LogBegan(); });
}

void RunEvents::SampleFinished(const FinishedSample& sample) {
  Offer([&](RunListener& listener) { listener.SampleFinished(sample); });
}

void RunEvents::LogEnded(LogEnd why) {
  Offer([=](RunListener& listener) { listener.LogEnded(why); });
}

void RunEvents::RunEnded() {
  Offer([](RunListener& listener) { listener.RunEnded(); });
}

}  // namespace tarvolt
