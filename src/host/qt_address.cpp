// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_address.h"

#include "text/ansi.h"

namespace tarvolt {

QString QtText(const std::string& ansi) {
  return QString::fromStdString(Utf8FromAnsi(ansi));
}

std::string AnsiText(const QString& text) {
  return AnsiFromUtf8(text.toStdString());
}

std::optional<QHostAddress> LocalAddressOf(const std::string& text) {
  const std::string trimmed = Trim(text);
  if (trimmed.empty()) return QHostAddress(QHostAddress::Any);
  const QHostAddress address(QtText(trimmed));
  if (address.isNull()) return std::nullopt;
  return address;
}

bool IsAnyAddress(const QHostAddress& address) {
  return address == QHostAddress::Any || address == QHostAddress::AnyIPv4 || address == QHostAddress::AnyIPv6;
}

// What listens on both protocols sees an IPv4 peer under an address of IPv6.
SocketEnd EndOf(const QHostAddress& address, std::uint16_t port) {
  bool isIPv4 = false;
  const QHostAddress dotted(address.toIPv4Address(&isIPv4));
  return {AnsiText((isIPv4 ? dotted : address).toString()), port};
}

}  // namespace tarvolt
