// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/apply_function.h"

#include <algorithm>
#include <chrono>

#include "model/scoped_flag.h"
#include "text/number.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

// Stays until the next text: a message that was to be taken off is forgotten.
void ShowWork(ChartWindow& window, const std::string& text) {
  window.view.Status.Say(text);
  window.view.Status.Release();
}

bool LetOthersWork(Session& session, const ChartWindow& window) {
  session.host.loop.Yield(std::chrono::milliseconds(0));
  return !window.run.EndRequested;
}

void ApplyToAll(Session& session, ChartWindow& window, ChannelEquations& equations, const EquationSet& set) {
  ShowWork(window, "Applying Function to Data ... Please Wait");
  if (!LetOthersWork(session, window)) return;
  const std::string when = FormatDate(NowPrecise(session.host.clock), "YYMMDDHHnnSS");
  const EquationPass pass = ApplyEquations(window, equations, set, when, [&] {
    ++window.chart.RepaintRequests;
    return LetOthersWork(session, window);
  });
  for (const std::string& problem : pass.problems) session.Add2SLog(problem);
  if (pass.done < pass.count) {
    session.Add2SLog("Equation Applied to " + NumberText(std::int64_t{pass.done}) + " of " +
                     NumberText(std::int64_t{pass.count}) + " samples: the program ends.");
    return;
  }
  ShowWork(window, "Equation Applied");
  session.Add2SLog("Equation Applied");
}

}  // namespace

Outcome ApplyFunction(Session& session, ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                      int newChannels) {
  const int channels = std::min(window.chart.ChannelCount() + newChannels, kChannels);
  if (const Outcome sound = equations.Check(set, channels); !sound) return sound;
  const ScopedFlag busy(window.save.Loading);
  if (newChannels != 0) {
    ShowWork(window, "Adding New Channels ... Please Wait");
    session.host.loop.Yield(std::chrono::milliseconds(0));
    if (window.run.EndRequested) return Done();
    if (!AddEquationChannels(window, newChannels)) return Failure{"You cannot add that many channels."};
  }
  ApplyToAll(session, window, equations, set);
  return Done();
}

}  // namespace tarvolt
