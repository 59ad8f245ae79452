// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <optional>

#include "files/load_channels.h"
#include "model/session.h"

namespace tarvolt {

/// The loading panel over a window: false when it was cancelled. Waits for the person, while the recorder's events go
/// on.
bool AskLoadOptions(QWidget* parent, Session& session, LoadOptions& options);

/// Which channels of a file to load; nothing when that was cancelled. Waits in the same way.
std::optional<ChannelAnswer> AskWhichChannels(QWidget* parent, const ChannelQuestion& question);

}  // namespace tarvolt
