// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/make_host.h"

#include <utility>

#include "host/open_files.h"

namespace tarvolt {

HostOwner::HostOwner(QCoreApplication& application, std::unique_ptr<Dialogs> chosenDialogs)
    : loop(application), dialogs(std::move(chosenDialogs)) {}

std::unique_ptr<HostOwner> MakeHost(QCoreApplication& application, std::unique_ptr<Dialogs> dialogs) {
  RaiseOpenFileLimit();
  return std::make_unique<HostOwner>(application, std::move(dialogs));
}

}  // namespace tarvolt
