// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/priority.h"

namespace tarvolt {

namespace {

struct PriorityName {
  PriorityClass priority;
  const char* name;
  const char* stored;
};

constexpr PriorityName kPriorities[] = {{PriorityClass::Normal, "Normal", "&H20"},
                                        {PriorityClass::AboveNormal, "Above Normal", "&H8000"},
                                        {PriorityClass::High, "High", "&H80"},
                                        {PriorityClass::RealTime, "Real Time", "&H100"}};

}  // namespace

std::optional<PriorityClass> PriorityFromNumber(std::int32_t number) {
  for (const PriorityName& row : kPriorities) {
    if (static_cast<std::int32_t>(row.priority) == number) return row.priority;
  }
  return std::nullopt;
}

void SetPriority(Session& session, PriorityClass priority) {
  for (const PriorityName& row : kPriorities) {
    if (row.priority != priority) continue;
    std::string why;
    if (session.host.processes.SetPriority(priority, why)) {
      session.Add2SLog(std::string("SetPriority: Priority is set to ") + row.name);
    } else {
      session.Add2SLog(std::string("SetPriority: the system refuses ") + row.name + ": " + why);
    }
    session.store.SaveSetting(Section::Settings, "Priority", row.stored);
  }
}

void mnuPriority(Session& session, PriorityClass priority) {
  if (priority == PriorityClass::RealTime) {
    const Question question{"Tarvolt",
                            "Real Time priority can make the rest of the system stand still.\nDo you want it?",
                            Buttons::YesNo, Answer::No};
    if (session.host.dialogs.Ask(question) != Answer::Yes) return;
  }
  SetPriority(session, priority);
}

}  // namespace tarvolt
