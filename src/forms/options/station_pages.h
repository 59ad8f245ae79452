// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/options/option_page.h"

namespace tarvolt {

/// The pages of what the station does with its files, its neighbours and its person. `fields` outlives them.
OptionPage* MakeFilesPage(OptionFields& fields, QWidget* parent);
OptionPage* MakeBackupPage(OptionFields& fields, QWidget* parent);
OptionPage* MakeNetworkPage(OptionFields& fields, QWidget* parent);
OptionPage* MakeUdsPage(OptionFields& fields, QWidget* parent);
OptionPage* MakeMessagesPage(OptionFields& fields, QWidget* parent);

}  // namespace tarvolt
