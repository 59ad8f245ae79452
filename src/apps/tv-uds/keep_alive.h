// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTcpSocket>

namespace tarvolt::uds {

/// Has the system ask a silent peer whether it is still there, so that a machine that vanished without a word does
/// not hold the only connection for ever: it is given up about two minutes later.
void NoticeLostPeer(QTcpSocket& socket);

}  // namespace tarvolt::uds
