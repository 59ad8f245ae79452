// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/terminal_keys.h"

#include <fcntl.h>
#include <pty.h>

#include <ctime>

#include "host/qt_event_loop.h"
#include "waiting.h"

namespace tarvolt {
namespace {

class TerminalKeysTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(::openpty(&keyboard_, &terminal_, nullptr, nullptr, nullptr), 0); }
  void TearDown() override {
    if (keyboard_ != -1) ::close(keyboard_);
    ::close(terminal_);
  }

  void Press(std::string_view keys) {
    ASSERT_EQ(::write(keyboard_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  bool WaitsForWholeLines() {
    termios mode{};
    EXPECT_EQ(::tcgetattr(terminal_, &mode), 0);
    return (mode.c_lflag & ICANON) != 0 && (mode.c_lflag & ECHO) != 0;
  }

  QtEventLoop loop_{*QCoreApplication::instance()};
  int keyboard_ = -1;
  int terminal_ = -1;
};

TEST_F(TerminalKeysTest, TellsEscapeAtOnceAndLeavesTheTerminalAsItWas) {
  ASSERT_TRUE(WaitsForWholeLines());
  {
    TerminalKeys keys(loop_, terminal_);
    int escapes = 0;
    keys.OnEscape([&] { ++escapes; });
    EXPECT_FALSE(WaitsForWholeLines());
    Press("q\x1B[A");
    RunFor(loop_, std::chrono::milliseconds(50));
    EXPECT_EQ(escapes, 0);
    Press("\x1B");
    EXPECT_TRUE(WaitFor(loop_, [&] { return escapes == 1; }));
  }
  EXPECT_TRUE(WaitsForWholeLines());
}

TEST_F(TerminalKeysTest, ATerminalThatHasGoneCostsNothing) {
  TerminalKeys keys(loop_, terminal_);
  ::close(std::exchange(keyboard_, -1));
  const std::clock_t before = std::clock();
  RunFor(loop_, std::chrono::milliseconds(300));
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 7);
}

TEST_F(TerminalKeysTest, WithoutATerminalNothingIsRead) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  {
    TerminalKeys keys(loop_, ends[0]);
    bool told = false;
    keys.OnEscape([&] { told = true; });
    ASSERT_EQ(::write(ends[1], "\x1B", 1), 1);
    RunFor(loop_, std::chrono::milliseconds(20));
    EXPECT_FALSE(told);
  }
  char byte = 0;
  EXPECT_EQ(::read(ends[0], &byte, 1), 1);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(HoldsEscapeKey, IsNotMistakenInTheSequencesOfOtherKeys) {
  for (const char* keys : {"\x1B", "abc\x1B", "\x1B\x1B", "\x1B[A\x1B"}) EXPECT_TRUE(HoldsEscapeKey(keys)) << keys;
  for (const char* keys : {"", "abc", "\x1B[A", "\x1BOP", "\x1B[15~", "\x1Bx"})
    EXPECT_FALSE(HoldsEscapeKey(keys)) << keys;
}

}  // namespace
}  // namespace tarvolt
