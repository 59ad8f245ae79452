// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/default_equations.h"

#include "automation/channel_equations/equation_check.h"
#include "text/number.h"

namespace tarvolt {
namespace {

std::string KeyOf(const char* base, std::size_t channel) {
  return base + NumberText(static_cast<std::int64_t>(channel));
}

bool MayReplaceLiveOnes(Session& session) {
  const Question question{"Save as Defaults",
                          "The station applies its default equations to incoming data.\nReplace them by these?",
                          Buttons::YesNo, Answer::No};
  return session.host.dialogs.Ask(question) == Answer::Yes;
}

}  // namespace

void StoreEquations(Session& session, const EquationSet& set, bool applyToIncoming) {
  PutEquations(set, session.settings);
  session.settings.channels.ApplyToIncoming = applyToIncoming;
  const auto store = [&session](const std::string& key, const std::string& text) {
    if (!session.IsOverridden(key)) session.store.SaveSetting(Section::Settings, key, text);
  };
  session.store.BeginBatch();
  for (std::size_t channel = 0; channel < set.EquString.size(); ++channel) {
    store(KeyOf("Equ", channel), set.EquString[channel]);
    store(KeyOf("ApplyToCH", channel), NumberText(std::int64_t{set.ApplyToCH[channel]}));
  }
  store("ApplyToIncoming", applyToIncoming ? "True" : "False");
  session.store.EndBatch();
}

EquationSet LoadDefaultEquations(const SettingsStore& store) {
  EquationSet set;
  for (std::size_t i = 0; i < set.EquString.size(); ++i) {
    set.EquString[i] = store.GetSetting(Section::Settings, KeyOf("Equ", i));
    set.ApplyToCH[i] = RoundToInt16(Val(store.GetSetting(Section::Settings, KeyOf("ApplyToCH", i))));
  }
  return set;
}

Outcome SaveDefaultEquations(Session& session, const EquationSet& set, bool isForIncoming) {
  if (const Outcome fits = CheckLengths(set); !fits) return fits;
  const bool& isLive = session.settings.channels.ApplyToIncoming;
  if (!isForIncoming && isLive && !MayReplaceLiveOnes(session)) {
    return Failure{"The equations of incoming data stay as they were."};
  }
  StoreEquations(session, set, isLive);
  return Done();
}

}  // namespace tarvolt
