#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "sim/sim_host.h"
#include "sim/uds_peer.h"

using namespace std::chrono_literals;

namespace tarvolt {
namespace {

/// A small recorder: appends each arrival to a file, with a line from a timer in between.
class Program {
 public:
  explicit Program(const Host& host) : host_(host), socket_(host.sockets.MakeSocket()) {
    timer_ = host.loop.MakeTimer([this] { Append("tick\n"); });
    timer_->SetInterval(30);
    timer_->SetEnabled(true);
    socket_->onConnected = [this] { socket_->Write("PUSH\xFFSTAT\xFF"); };
    socket_->onDataArrival = [this] { Append(socket_->ReadAvailable() + "\n"); };
    socket_->Connect("127.0.0.1", UdsPeer::kDefaultPort);
  }
  ~Program() { Append("ended\n"); }

  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

 private:
  void Append(const std::string& line) {
    std::error_code error;
    if (const auto file = host_.files.Open("/log", OpenMode::Append, error)) file->Write(line, error);
  }

  Host host_;
  std::unique_ptr<SocketControl> socket_;
  std::unique_ptr<Timer> timer_;
};

struct Outcome {
  std::uint64_t fingerprint = 0;
  std::string log;
  bool operator==(const Outcome&) const = default;
};

/// A day in rough weather with a crash in the middle.
Outcome RoughDay(std::uint64_t seed) {
  SimHost host(seed);
  UdsPeer uds(host.loop, host.network, seed);
  host.network.weather = {1ms, 40ms, true, true, 0};
  auto program = std::make_unique<Program>(host.Record());
  host.disk.CrashAtOperation(500 + seed, seed);
  EXPECT_TRUE(host.RunsUntilCrash([&] { host.loop.RunFor(1h); }));
  program.reset();
  host.Reboot();
  program = std::make_unique<Program>(host.Record());
  host.loop.RunFor(10s);
  program.reset();
  return {host.loop.Fingerprint(), host.disk.Contents("/log").value_or("")};
}

TEST(SimHost, OneSeedGivesOneRunAndAnotherSeedAnother) {
  const Outcome first = RoughDay(11);
  EXPECT_EQ(first, RoughDay(11));
  const Outcome other = RoughDay(12);
  EXPECT_NE(first.fingerprint, other.fingerprint);
  EXPECT_NE(first.log, other.log);
}

TEST(SimHost, ADeadProgramDoesNothingMoreAndTheNextOneRuns) {
  SimHost host(1);
  auto program = std::make_unique<Program>(host.Record());
  host.loop.RunFor(100ms);
  host.Kill();
  const std::uint64_t operations = host.disk.Operations();
  host.loop.RunFor(1s);
  program.reset();
  host.Reboot();
  EXPECT_EQ(host.disk.Operations(), operations);
  EXPECT_EQ(host.disk.Contents("/log"), "tick\ntick\ntick\n") << "no tick and no last words after its death";
  program = std::make_unique<Program>(host.Record());
  host.loop.RunFor(35ms);
  program.reset();
  EXPECT_EQ(host.disk.Contents("/log"), "tick\ntick\ntick\ntick\nended\n");
}

TEST(SimDialogs, AnswersFromTheScriptAndThenByDefault) {
  SimHost host(1);
  host.dialogs.AnswerNext(Answer::No);
  host.dialogs.ChooseFileNext(std::nullopt);
  const Question question{"Chart", "Save it?", Buttons::YesNo, Answer::Yes};
  EXPECT_EQ(host.dialogs.Ask(question), Answer::No);
  EXPECT_EQ(host.dialogs.Ask(question), Answer::Yes);
  const SaveFileRequest request{"Save", "/data", "UT100102", ".tvd", ""};
  EXPECT_EQ(host.dialogs.AskSaveFile(request), std::nullopt);
  EXPECT_EQ(host.dialogs.AskSaveFile(request), "/data/UT100102.tvd");
  host.dialogs.ShowMessage("Disk", "It is full");
  EXPECT_EQ(host.dialogs.Questions(), 4);
  EXPECT_TRUE(host.dialogs.HasShown("is full"));
  host.dialogs.AnswerNext(Answer::Cancel);
  EXPECT_THROW(host.dialogs.Ask(question), std::logic_error);
}

TEST(SimProcesses, AStartedProgramComesToLifeThroughItsCallback) {
  SimHost host(1);
  std::unique_ptr<UdsPeer> uds;
  host.processes.onStart = [&](const std::string&) {
    host.loop.After(2s, [&] {
      uds = std::make_unique<UdsPeer>(host.loop, host.network, 1);
      host.processes.OpenWindow("My User Data Source");
    });
  };
  std::string why;
  host.processes.RefuseStarts("not found");
  EXPECT_FALSE(host.processes.StartMinimised("uds.exe", why));
  EXPECT_EQ(why, "not found");
  host.processes.RefuseStarts("");
  EXPECT_TRUE(host.processes.StartMinimised("uds.exe /q", why));
  EXPECT_FALSE(host.processes.IsRunning("User Data Source"));
  EXPECT_TRUE(host.loop.RunUntil([&] { return host.processes.IsRunning("User Data Source"); }, 10s));
  EXPECT_EQ(host.loop.Now(), 2000);
  EXPECT_EQ(host.processes.Started().back(), "uds.exe /q");
}

}  // namespace
}  // namespace tarvolt
