// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes of a User Data Source into the recorder's end of the link, while a chart runs. The first byte picks the mode;
// each byte 0xFE in the input ends one data event.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "require.h"
#include "sim/sim_host.h"
#include "sources/uds_client.h"

namespace tarvolt {
namespace {

class StoppingControl final : public RunControl {
 public:
  void StartChart(const std::string&) override {}
  void StopChart() override {
    window->run.phase = RunPhase::Idle;
    client->Close();
  }
  void MaxedOut(MaxedOutMode) override {}
  void ProcessCmd(std::string_view text) override { Require(text.size() <= 4096); }

  ChartWindow* window = nullptr;
  UdsClient* client = nullptr;
};

/// What stands on the other side. Made once: a message changes nothing of it, and a session costs more than all
/// messages of an input.
struct World {
  SimHost host{1};
  Session session{host.Record(), "home"};
  std::unique_ptr<SocketListener> listener = host.network.MakeListener();
  std::unique_ptr<SocketControl> source;

  World() {
    std::string why;
    Require(listener->Listen("127.0.0.1", 1735, why));
    listener->onAccept = [this](std::unique_ptr<SocketControl> accepted) {
      source = std::move(accepted);
      source->Write("^^1001\xFF");
    };
    host.network.weather.delay = std::chrono::milliseconds(0);
  }

  void Feed(std::string_view bytes) {
    source->Write(bytes);
    host.loop.RunFor(std::chrono::milliseconds(1));
  }
};

void RunLink(bool push, std::string_view input) {
  static World world;
  Session& session = world.session;
  session.settings.program.ShowMsgBox = false;
  session.settings.channels.Dsrc = {20, 21, 22, 23, 24, 25, 26, 27};
  session.settings.uds.UDSpush = push;
  ChartWindow window;
  window.run.plan = PlanOfRun(session.settings);
  StoppingControl control;
  SoundInput sound(session, window);
  UdsClient client(session, window, control, sound, [&](std::optional<TimeStamp> time) {
    Require(!time || (*time > 0 && *time < 2958466));
    if (window.chart.Count() < 10) window.chart.AddTime(time.value_or(0));
  });
  control.window = &window;
  control.client = &client;
  Require(client.UDSConnect());
  window.run.phase = RunPhase::Running;

  while (!input.empty() && client.IsReady()) {
    const std::size_t end = std::min(input.find('\xFE'), input.size() - 1);
    world.Feed(input.substr(0, end + 1));
    input.remove_prefix(end + 1);
  }
  Require(window.run.ChannelCount >= 1 && window.run.ChannelCount <= kChannels);
  Require(window.chart.ChannelCount() >= 1 && window.chart.ChannelCount() <= kChannels);
  Require(std::isfinite(window.run.log.ChartEndTime) && std::isfinite(window.chart.XAxisMax));
}

}  // namespace
}  // namespace tarvolt

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
  tarvolt::RunLink((data[0] & 1) != 0, input);
  return 0;
}
