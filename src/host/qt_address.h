// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHostAddress>
#include <QString>
#include <optional>
#include <string>

#include "platform/socket_control.h"

namespace tarvolt {

/// The system's single-byte text as Qt's, and back.
QString QtText(const std::string& ansi);
std::string AnsiText(const QString& text);

/// A local address as settings have it, blanks around it allowed: Any when it is empty. Nothing when it is no address.
std::optional<QHostAddress> LocalAddressOf(const std::string& text);

/// True for Any and for all zeros.
bool IsAnyAddress(const QHostAddress& address);

SocketEnd EndOf(const QHostAddress& address, std::uint16_t port);

}  // namespace tarvolt
