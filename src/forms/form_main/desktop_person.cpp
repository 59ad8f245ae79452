// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_main/desktop_person.h"

#include "forms/first_use/form_first_use.h"
#include "forms/form_main/main_window.h"
#include "forms/load/load_forms.h"

namespace tarvolt {

bool DesktopPerson::CompleteFirstUse(Session& session, Settings& settings) {
  return !attended_ || RunFirstUse(session, settings);
}

bool DesktopPerson::LetsEnd() {
  return window_ == nullptr || window_->ObserverLogMayEnd();
}

void DesktopPerson::ChooseSoundFormat() {
  if (window_ != nullptr) window_->ShowSoundFormats();
}

bool DesktopPerson::EditEquations(const EquationsRequest& request, EquationSet& set) {
  return window_ != nullptr && window_->EditEquations(request, set);
}

bool DesktopPerson::ChooseLoadOptions(Session& session, LoadOptions& options) {
  return AskLoadOptions(window_, session, options);
}

std::optional<ChannelAnswer> DesktopPerson::ChooseChannels(const ChannelQuestion& question) {
  return AskWhichChannels(window_, question);
}

bool DesktopPerson::DrawChart(const std::filesystem::path& file, bool fullView, std::string& problem) {
  return window_ != nullptr && window_->DrawChart(file, fullView, problem);
}

void DesktopPerson::OpenObserverLog() {
  if (window_ != nullptr) window_->OpenObserverLog();
}

}  // namespace tarvolt
