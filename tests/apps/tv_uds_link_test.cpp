// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "apps/tv-uds/link/message_reader.h"
#include "apps/tv-uds/link/messages.h"
#include "apps/tv-uds/link/pacer.h"
#include "text/number.h"

namespace tarvolt::uds {
namespace {

using Texts = std::vector<std::string>;

TEST(TvUdsMessages, TooLongOnesArePassedOverWhole) {
  MessageReader reader;
  const std::string longest(MessageReader::kLongestMessage, 'x');
  EXPECT_EQ(reader.Add(longest + "\xFF"), Texts{longest});
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(reader.Add(longest), Texts());
  EXPECT_EQ(reader.Add("GETD\xFFGETD\xFF"), Texts{"GETD"});
}

TEST(TvUdsMessages, CarryEveryNumberUnchanged) {
  EXPECT_EQ(DataSetMessages({12.25, -1.5}, 46000.5), "#0 12.25\xFF#1-1.5\xFF^^300046000.5\xFF");
  using Limits = std::numeric_limits<double>;
  for (const double value : {0.1, -1.0 / 3, 1e21, 1e-300, Limits::max(), Limits::min(), 46348.94160970519, 5e15 + 1}) {
    const std::string set = DataSetMessages({value}, value);
    const std::size_t end = set.find(kEndOfMessage);
    EXPECT_EQ(Val(set.substr(2, end - 2)), value);
    const std::string stamp = set.substr(end + 1);
    EXPECT_EQ(Val(std::string_view(stamp).substr(6, stamp.size() - 7)), value);
  }
}

TEST(TvUdsPacer, KeepsTheRateWithoutDrift) {
  Pacer pacer(7);
  pacer.StartAt(5000);
  for (int i = 0; i < 7 * 86400; ++i) pacer.Take();
  EXPECT_DOUBLE_EQ(pacer.NextTime(), 5000 + 86400);
  pacer.StartAt(200000);  // pushing goes on after a pause: the numbers do too
  EXPECT_EQ(pacer.Next(), 7 * 86400);
  pacer.Take();
  EXPECT_DOUBLE_EQ(pacer.NextTime(), 200000 + 1.0 / 7);
}

TEST(TvUdsPacer, LeavesOutOnlyWhatIsTooLate) {
  Pacer pacer(10);
  pacer.StartAt(100);
  EXPECT_EQ(pacer.LeaveOutLate(50), 0);
  EXPECT_EQ(pacer.LeaveOutLate(110), 0);
  EXPECT_EQ(pacer.LeaveOutLate(112.05), 21);
  EXPECT_EQ(pacer.Next(), 21);
  EXPECT_NEAR(pacer.NextTime(), 102.1, 1e-9);
  EXPECT_EQ(pacer.LeaveOutLate(112.05), 0);
}

TEST(TvUdsPacer, PutsOffAndKeepsEverySet) {
  Pacer pacer(10);
  pacer.StartAt(100);
  pacer.Take();
  EXPECT_FALSE(pacer.PutOffLate(110));
  EXPECT_TRUE(pacer.PutOffLate(150));
  EXPECT_EQ(pacer.Next(), 1);
  EXPECT_NEAR(pacer.NextTime(), 140, 1e-9);
  pacer.Take();
  EXPECT_NEAR(pacer.NextTime(), 140.1, 1e-9);
}

}  // namespace
}  // namespace tarvolt::uds
