// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>
#include <csignal>
#include <memory>

#include "apps/tv-uds/options.h"
#include "apps/tv-uds/presence.h"
#include "apps/tv-uds/server.h"
#include "apps/tv-uds/signals/live_source.h"
#include "apps/tv-uds/signals/replay_source.h"
#include "apps/tv-uds/stop_signals.h"
#include "apps/tv-uds/tell.h"
#include "apps/tv-uds/wav_maker.h"
#include "text/number.h"

namespace {

using namespace tarvolt;
using namespace tarvolt::uds;

constexpr int kFailed = 1;

std::unique_ptr<Source> MakeSource(const Options& options, std::string& why) {
  if (options.replay.empty()) {
    return std::make_unique<LiveSource>(MakeSignal(options.signal, options.seed), options.channels, options.rate);
  }
  auto replay = ReplaySource::ReadFile(options.replay, why);
  if (!replay) why = options.replay + ": " + why;
  return replay;
}

void TellListening(const QTcpServer& listener) {
  Tell("listening on " + listener.serverAddress().toString().toStdString() + " port " +
       NumberText(static_cast<std::int64_t>(listener.serverPort())));
}

int Fail(const std::string& why) {
  Tell(why);
  return kFailed;
}

}  // namespace

int main(int argc, char** argv) {
  StopSignals::Hold();
  std::signal(SIGPIPE, SIG_IGN);  // standard error may be a pipe that nobody reads any more

  Options options;
  if (const auto status = ParseOptions(argc, argv, options)) return *status;
  QCoreApplication application(argc, argv);
  std::string why;
  if (!options.wav.empty()) {
    const auto signal = MakeSignal(options.signal, options.seed);
    return WriteWav(options.wav, *signal, options.wavSeconds, options.seed, why) ? 0 : Fail(why);
  }
  const std::unique_ptr<Source> source = MakeSource(options, why);
  if (!source) return Fail(why);

  Server server(*source, options, [&options] {
    if (options.once) QCoreApplication::exit(0);
  });
  if (!server.Listen(why)) return Fail(why);
  BearTheName(server.Listener(), argv);

  const StopSignals stopSignals([] { QCoreApplication::exit(0); });
  server.Serve();
  TellListening(server.Listener());
  return QCoreApplication::exec();
}
