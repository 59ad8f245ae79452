// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// The plotting library's header needs Qt's lower-case keywords, which clash with names of ours everywhere else.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef foreach
