// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "model/run_state.h"
#include "platform/host.h"

namespace tarvolt {

/// Expands the tags of a text, in this order and in this spelling alone:
///
///     [INTERNET IP]            an address of this machine in its own network, until the one on the internet is found
///     [SAMPLE NUMBER]          the samples of this log so far, with a blank in front
///     [DATE FORMAT pattern]    now in the window's log base (UT or local), by a picture of FormatDate; the first one
///     [DATE TIME]              the same as "YYMMDDHHnnSS"
///
/// With a DATE FORMAT tag, every "]" that is left in the text goes with it, and so does the beginning of any further
/// such tag (meant): a DATE TIME behind it stays as text.
std::string ReplaceTags(std::string_view text, const Host& host, const RunState& run);

}  // namespace tarvolt
