// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/options.h"

#include <CLI/CLI.hpp>
#include <QHostAddress>

#include "apps/tv-uds/signals/signal.h"

namespace tarvolt::uds {
namespace {

constexpr int kWrongUsage = 2;

constexpr const char* kDescription =
    "A User Data Source: a program that the recorder connects to for its data.\n"
    "It simulates a receiver, or replays a text file of numbers.";

std::string CheckAddress(const std::string& text) {
  return QHostAddress(QString::fromStdString(text)).isNull() ? "\"" + text + "\" is not an IP address" : std::string();
}

void AddOptions(CLI::App& app, Options& options) {
  app.add_option("--port", options.port, "TCP port to listen on, 0 for a free one")->capture_default_str();
  app.add_option("--address", options.address, "IP address to listen on")
      ->check(CheckAddress)
      ->capture_default_str()
      ->type_name("ADDRESS");
  auto* channels = app.add_option("--channels", options.channels, "channels, 1 to 8");
  channels->check(CLI::Range(1, 8))->capture_default_str()->type_name("N");
  app.add_option("--rate", options.rate, "data sets a second, 0.001 to 1000")
      ->check(CLI::Range(0.001, 1000.0))
      ->capture_default_str()
      ->type_name("HZ");
  auto* signal = app.add_option("--signal", options.signal, "what to simulate");
  signal->check(CLI::IsMember(SignalKinds()))->capture_default_str()->type_name("KIND");
  app.add_option("--replay", options.replay, "send the numbers of this text file once, one data set a line")
      ->excludes(channels)
      ->excludes(signal)
      ->type_name("FILE");
  app.add_option("--wav", options.wav, "write the signal as the sound of a receiver to this wave file, and end")
      ->type_name("FILE");
  app.add_option("--wav-seconds", options.wavSeconds, "length of the wave file, 1 to 3600")
      ->check(CLI::Range(1.0, 3600.0))
      ->capture_default_str();
  app.add_option("--seed", options.seed, "the same seed gives the same signal")->capture_default_str();
  app.add_flag("--time-stamps", options.timeStamps, "send the time (UT) with each data set");
  app.add_flag("--once", options.once, "end when the recorder has disconnected");
}

void AddModes(CLI::App& app, Options& options) {
  auto* modes = app.add_option_group("mode");
  modes->add_flag_callback(
      "--auto", [&] { options.mode = Mode::Auto; }, "do as the recorder asks (default)");
  modes->add_flag_callback(
      "--push", [&] { options.mode = Mode::Push; }, "push data whatever the recorder asks");
  modes->add_flag_callback(
      "--poll", [&] { options.mode = Mode::Poll; }, "send data on request alone");
  modes->require_option(0, 1);
}

}  // namespace

std::optional<int> ParseOptions(int argc, char** argv, Options& options) {
  CLI::App app(kDescription, "tv-uds");
  app.set_version_flag("--version", std::string("tv-uds ") + TARVOLT_VERSION);
  app.set_help_flag("--help", "show this text and end");
  AddOptions(app, options);
  AddModes(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  }
  return std::nullopt;
}

}  // namespace tarvolt::uds
