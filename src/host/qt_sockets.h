// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/event_loop.h"
#include "platform/sockets.h"

namespace tarvolt {

/// Makes sockets and listeners whose events run on `loop`.
class QtSockets final : public Sockets {
 public:
  explicit QtSockets(EventLoop& loop) : loop_(loop) {}
  std::unique_ptr<SocketControl> MakeSocket() override;
  std::unique_ptr<SocketListener> MakeListener() override;
  std::string LocalAddress() const override;

 private:
  EventLoop& loop_;
};

}  // namespace tarvolt
