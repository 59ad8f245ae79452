// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/presence.h"

#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <string_view>

namespace tarvolt::uds {
namespace {

constexpr const char* kListenerVariable = "TV_UDS_LISTENER";

bool BearsTheName(const char* name) {
  return std::string_view(name).find("User Data Source") != std::string_view::npos;
}

}  // namespace

void BearTheName(const QTcpServer& server, char** argv) {
  if (BearsTheName(argv[0])) return;
  const int listener = static_cast<int>(server.socketDescriptor());
  const int flags = fcntl(listener, F_GETFD);
  if (flags < 0 || fcntl(listener, F_SETFD, flags & ~FD_CLOEXEC) < 0) return;
  qputenv(kListenerVariable, QByteArray::number(listener));

  QByteArray name(kSourceName);
  char* const oldName = argv[0];
  argv[0] = name.data();
  execv("/proc/self/exe", argv);

  argv[0] = oldName;
  qunsetenv(kListenerVariable);
  fcntl(listener, F_SETFD, flags);
}

bool AdoptListener(QTcpServer& server) {
  bool isNumber = false;
  const int listener = qEnvironmentVariableIntValue(kListenerVariable, &isNumber);
  qunsetenv(kListenerVariable);
  if (!isNumber || listener <= STDERR_FILENO || !server.setSocketDescriptor(listener)) return false;
  fcntl(listener, F_SETFD, FD_CLOEXEC);
  return true;
}

}  // namespace tarvolt::uds
