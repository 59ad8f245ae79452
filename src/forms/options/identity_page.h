// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPlainTextEdit>

#include "forms/options/option_page.h"
#include "platform/clock.h"

namespace tarvolt {

/// Who and where the station is, and its time zone: the fields that the first use asks for as well. `clock` outlives
/// the page.
void AddStationFields(OptionPage& page, OptionFields& fields, Clock& clock);

/// The page Identity. `notes` is given the field of the observer's notes.
OptionPage* MakeIdentityPage(OptionFields& fields, Clock& clock, QPlainTextEdit*& notes, QWidget* parent);

/// The text of a folder chosen by the person; empty when that was cancelled.
QString ChooseFolder(QWidget* parent, const QString& title, const QString& text);

}  // namespace tarvolt
