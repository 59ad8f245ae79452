// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTcpServer>

namespace tarvolt::uds {

/// The recorder finds a running source by these words in the name that the program runs under.
inline constexpr const char* kSourceName = "User Data Source tv-uds";

/// Makes this process run under the source's name by starting its program anew, with the same arguments and with the
/// listening socket handed over. Whoever finds the name can therefore connect at once. Does nothing when the process
/// bears the name already; comes back when the program cannot be started anew, and then only the name is missing.
void BearTheName(const QTcpServer& server, char** argv);

/// Takes over the listening socket that BearTheName handed over; false when there is none.
bool AdoptListener(QTcpServer& server);

}  // namespace tarvolt::uds
