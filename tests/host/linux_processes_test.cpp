// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/linux_processes.h"

#include <sched.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <QProcess>
#include <cerrno>
#include <fstream>
#include <sstream>

#include "host/qt_event_loop.h"
#include "temp_folder.h"
#include "waiting.h"

namespace tarvolt {
namespace {

using std::chrono::milliseconds;

/// A program that runs until it is dropped, under a name of the test's choice.
class RunningProgram {
 public:
  explicit RunningProgram(const QString& argument0) {
    process_.start("bash", {"-c", "exec -a \"$0\" sleep 60", argument0});
  }
  ~RunningProgram() {
    process_.kill();
    process_.waitForFinished();
  }

 private:
  QProcess process_;
};

class LinuxProcessesTest : public testing::Test {
 protected:
  bool AppearsAs(std::string_view words) {
    return Waits([&] { return processes_.IsRunning(words); });
  }

  /// Looks at what another process does, which sends no event.
  template <typename Condition>
  bool Waits(Condition done) {
    for (int i = 0; i < 2000 && !done(); ++i) RunFor(loop_, milliseconds(5));
    return done();
  }

  void WriteProgram(const std::filesystem::path& path, const std::string& lines) {
    std::ofstream(path) << "#!/bin/sh\n" << lines;
    ASSERT_EQ(::chmod(path.c_str(), 0700), 0);
  }

  std::string TextOf(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }

  bool Starts(const std::string& commandLine) {
    why_.clear();
    return processes_.StartMinimised(commandLine, why_);
  }

  TempFolder folder_;
  QtEventLoop loop_{*QCoreApplication::instance()};
  LinuxProcesses processes_;
  std::string why_;
};

TEST_F(LinuxProcessesTest, FindsAProgramByASingleByteNameWithoutItsFolders) {
  {
    const RunningProgram program(QString::fromUtf8("/opt/Tarvolt Test Folder/The Empf\xC3\xA4nger 1.0"));
    EXPECT_TRUE(AppearsAs("Empf\xE4nger"));
    for (const char* other : {"Empf\xE4nger 2", "", "Tarvolt Test Folder"}) EXPECT_FALSE(processes_.IsRunning(other));
  }
  EXPECT_FALSE(processes_.IsRunning("Empf\xE4nger"));
}

TEST_F(LinuxProcessesTest, FindsANameSetForTheKernelAlthoughItIsCut) {
  const std::string name = "Tarvolt Source X";  // one byte more than the kernel keeps
  WriteProgram(folder_.Path() / "named", "printf '" + name + "' > /proc/$$/comm\nread -r line < \"$1\"\n");
  ASSERT_EQ(::mkfifo((folder_.Path() / "hold").c_str(), 0600), 0);
  QProcess program;
  program.start(QString::fromStdString((folder_.Path() / "named").native()),
                {QString::fromStdString((folder_.Path() / "hold").native())});
  EXPECT_TRUE(AppearsAs(name));
  EXPECT_FALSE(processes_.IsRunning("Tarvolt Sourc X"));
  program.kill();
  program.waitForFinished();
}

TEST_F(LinuxProcessesTest, AnEndedProgramThatNobodyHasReapedIsNotRunning) {
  QProcess program;
  program.start("bash", {"-c", "exec -a 'tvzombiechild' true & exec -a 'tvzombieparent' sleep 60"});
  ASSERT_TRUE(AppearsAs("tvzombieparent"));
  EXPECT_TRUE(Waits([&] { return !processes_.IsRunning("tvzombiechild") && !processes_.IsRunning("true"); }));
  program.kill();
  program.waitForFinished();
}

TEST(SplitCommandLine, CutsAtBlanksAndKeepsWhatIsQuoted) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(SplitCommandLine("  run  -a\tb "), (Words{"run", "-a", "b"}));
  EXPECT_EQ(SplitCommandLine("\"/opt/my program\" --name=\"a b\"c \"\""),
            (Words{"/opt/my program", "--name=a bc", ""}));
  EXPECT_EQ(SplitCommandLine("run \"open end "), (Words{"run", "open end "}));
  EXPECT_EQ(SplitCommandLine(" "), Words{});
}

TEST_F(LinuxProcessesTest, StartsAProgramWithItsArgumentsAndLeavesNoTrace) {
  const auto program = folder_.Path() / "my program";
  const auto out = folder_.Path() / "out";
  WriteProgram(program, "fds=$(readlink /proc/$$/fd/0 /proc/$$/fd/1)\ncd '" + folder_.Path().native() +
                            "'\n{ printf '%s|' \"$@\"; echo $fds; } > part\nmv part out\n");
  EXPECT_TRUE(Starts("\"" + program.native() + "\" one \"two three\" f\xFCnf")) << why_;
  ASSERT_TRUE(Waits([&] { return std::filesystem::exists(out); }));
  EXPECT_EQ(TextOf(out), "one|two three|f\xC3\xBCnf|/dev/null /dev/null\n");
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left to be reaped";
  EXPECT_EQ(errno, ECHILD);

  std::filesystem::remove(out);
  EXPECT_TRUE(Starts(program.native())) << "a path with blanks that exists is one word: " << why_;
  EXPECT_TRUE(Waits([&] { return std::filesystem::exists(out); }));
}

TEST_F(LinuxProcessesTest, TellsWhyAProgramCannotBeStarted) {
  std::ofstream(folder_.Path() / "data") << "no program";
  for (const std::string& line :
       {std::string("/no/such/program -x"), std::string("  "), (folder_.Path() / "data").string()}) {
    EXPECT_FALSE(Starts(line)) << line;
    EXPECT_NE(why_, "") << line;
  }
}

TEST_F(LinuxProcessesTest, SetsThePriorityOrTellsWhyNot) {
  struct Expected {
    PriorityClass priority;
    int nice;
  };
  for (const auto& [priority, nice] : {Expected{PriorityClass::AboveNormal, -6}, Expected{PriorityClass::High, -11}}) {
    why_.clear();
    if (processes_.SetPriority(priority, why_)) {
      EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), nice);
    } else {
      EXPECT_NE(why_, "");
    }
  }
  if (processes_.SetPriority(PriorityClass::RealTime, why_)) {
    const int policy = ::sched_getscheduler(0) & ~SCHED_RESET_ON_FORK;
    EXPECT_TRUE(policy == SCHED_FIFO || ::getpriority(PRIO_PROCESS, 0) == -19);
    const auto out = folder_.Path() / "nice";
    EXPECT_TRUE(Starts("sh -c \"ps -o ni=,cls= -p $$ > '" + out.native() + "'\"")) << why_;
    EXPECT_TRUE(Waits([&] { return TextOf(out).ends_with('\n'); }));
    EXPECT_EQ(TextOf(out), "  0  TS\n") << "a started program does not inherit the priority";
  }
  ASSERT_TRUE(processes_.SetPriority(PriorityClass::Normal, why_)) << why_;
  EXPECT_EQ(::sched_getscheduler(0) & ~SCHED_RESET_ON_FORK, SCHED_OTHER);
  EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), 0);
  EXPECT_FALSE(processes_.SetPriority(static_cast<PriorityClass>(1), why_));
}

}  // namespace
}  // namespace tarvolt
