// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/chart_window.h"
#include "model/run_control.h"
#include "model/session.h"
#include "sim/sim_host.h"
#include "sources/uds_client.h"

namespace tarvolt {

/// A User Data Source at the other end of a simulated network: answers STAT and GETD with what it is reported to.
class ScriptedSource {
 public:
  ScriptedSource(SimHost& machine, std::uint16_t port) : listener_(machine.network.MakeListener()) {
    listener_->onAccept = [this](std::unique_ptr<SocketControl> accepted) { Accept(std::move(accepted)); };
    std::string why;
    if (!listener_->Listen("127.0.0.1", port, why)) throw std::logic_error(why);
  }

  std::string statusAnswer = "^^20132\xFF^^1001\xFF";
  std::string dataAnswer;
  std::vector<std::string> heard;       ///< the words that came
  std::function<void()> onStat;         ///< instead of the answer
  std::unique_ptr<SocketControl> peer;  ///< the last one that connected

 private:
  void Accept(std::unique_ptr<SocketControl> accepted) {
    peer = std::move(accepted);
    peer->onDataArrival = [this] {
      received_ += peer->ReadAvailable();
      for (auto end = received_.find('\xFF'); end != std::string::npos; end = received_.find('\xFF')) {
        const std::string word = received_.substr(0, end);
        received_.erase(0, end + 1);
        Hear(word);
      }
    };
  }

  void Hear(const std::string& word) {
    heard.push_back(word);
    if (word == "STAT" && onStat) return onStat();
    if (word == "STAT") peer->Write(statusAnswer);
    if (word == "GETD" && !dataAnswer.empty()) peer->Write(dataAnswer);
  }

  std::unique_ptr<SocketListener> listener_;
  std::string received_;
};

/// A window with a link to a data source on a simulated machine, and a stop that does what a run's stop does to it.
class UdsBench final : public RunControl {
 public:
  explicit UdsBench(std::initializer_list<std::int16_t> sources = {20, 21}) {
    settings.uds.UDSip = "127.0.0.1";
    settings.uds.UDSport = 1735;
    settings.uds.UDSpush = false;
    settings.uds.StartUDS = false;
    settings.program.ShowMsgBox = true;
    settings.timing.ChartWidth = 120;
    settings.timing.MaxDuration = 1;
    settings.channels.Dsrc = {};
    int row = 0;
    for (const std::int16_t number : sources) settings.channels.Dsrc[row++] = number;
  }

  void StartChart(const std::string&) override {}
  void StopChart() override {
    if (!run.ChartRunning()) return;
    run.phase = RunPhase::Idle;
    run.AbortFlag = true;
    client.Close();
    ++stops;
  }
  void MaxedOut(MaxedOutMode) override {}
  void ProcessCmd(std::string_view text) override {
    commands.emplace_back(text);
    if (whileCommandRuns) whileCommandRuns();
  }

  /// The source comes up, the link too, and the run begins.
  bool StartRun(bool push = false) {
    settings.uds.UDSpush = push;
    if (!source) source.emplace(host, std::uint16_t{1735});
    run.plan = PlanOfRun(settings);
    if (client.UDSConnect()) run.phase = RunPhase::Running;
    return run.ChartRunning();
  }

  /// One data event with these bytes.
  void Send(std::string_view bytes) {
    source->peer->Write(bytes);
    host.loop.RunFor(std::chrono::milliseconds(5));
  }

  void BreakLink() { host.network.Break(*source->peer); }

  void PressEscapeAfter(std::chrono::milliseconds wait) {
    host.loop.After(wait, [this] { run.AbortFlag = true; });
  }

  int LogLines(std::string_view words) const {
    int count = 0;
    const std::string& text = session.log.Text();
    for (auto at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) ++count;
    return count;
  }

  SimHost host{7};
  Session session{host.Record(), "/station"};
  Settings& settings = session.settings;
  ChartWindow window;
  RunState& run = window.run;
  std::vector<std::optional<TimeStamp>> sets;
  std::function<void()> whileSetEnds;
  std::function<void()> whileCommandRuns;
  std::vector<std::string> commands;
  int stops = 0;
  std::optional<ScriptedSource> source;
  SoundInput sound{session, window};
  UdsClient client{session, window, *this, sound, [this](std::optional<TimeStamp> time) {
                     sets.push_back(time);
                     if (whileSetEnds) whileSetEnds();
                   }};
};

}  // namespace tarvolt
