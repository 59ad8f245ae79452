#pragma once

#include "forms/options/option_page.h"
#include "model/session.h"

namespace tarvolt {

/// The page of the sound input. `fields` and `session` outlive it.
OptionPage* MakeSoundPage(OptionFields& fields, Session& session, QWidget* parent);

/// Tells the format that `card` is opened with, in the page made by MakeSoundPage.
void ShowSoundFormat(const QWidget& page, const Session& session, const std::string& card);

}  // namespace tarvolt
