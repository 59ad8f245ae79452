// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "station/station.h"

namespace tarvolt {
namespace {

// A person closes the main window while a chart is recorded.
class ClosingTheWindow : public testing::Test {
 protected:
  ClosingTheWindow() { station.Set("PromptBeforeSaving", true).StartChart().RunForSets(40); }
  bool Ends() {
    station.Form().mnuExit();
    return station.Run().EndRequested;
  }
  SimDialogs& Dialogs() { return station.host.dialogs; }

  Station station;
};

TEST_F(ClosingTheWindow, StopsNothingBeforeTheAnswerAndNothingByItsDefault) {
  Dialogs().whileAsking = [this](const SimDialogs::Box&) { station.RunFor(std::chrono::seconds(1)); };
  EXPECT_FALSE(Ends());
  EXPECT_TRUE(station.Running());
  EXPECT_EQ(station.Chart().Count(), 50) << "it went on while the question stood";
  Dialogs().whileAsking = {};

  station.Set("ShowMsgBox", false);
  EXPECT_TRUE(Ends());
  EXPECT_EQ(Dialogs().Questions(), 1) << "nothing waits for a person";
  station.ShutDown();
  EXPECT_EQ(station.FilesSaved().size(), 1u);
}

TEST_F(ClosingTheWindow, ACancelledSaveReturnsToTheChart) {
  Dialogs().AnswerNext(Answer::Yes);
  Dialogs().ChooseFileNext(std::nullopt);
  EXPECT_FALSE(Ends());
  EXPECT_FALSE(station.Running());
  EXPECT_EQ(station.Chart().Count(), 40);

  Dialogs().AnswerNext(Answer::Yes);
  EXPECT_TRUE(Ends());
  const int questions = Dialogs().Questions();
  station.ShutDown();
  EXPECT_EQ(Dialogs().Questions(), questions);
  EXPECT_EQ(station.OnlySaved(), Ramp(40));
}

}  // namespace
}  // namespace tarvolt
