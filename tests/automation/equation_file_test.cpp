// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/equation_file.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/channel_equations/equation_trial.h"
#include "sim/sim_host.h"

namespace tarvolt {
namespace {

TEST(EquationFile, HasALineAChannelAndLeavesWhatItDoesNotHave) {
  EquationSet set;
  set.EquString = {"X*2", "", "IF{[X] > [1]};THEN{a=1}", "\xB5*X"};
  set.ApplyToCH = {1, 0, 1};
  EXPECT_EQ(WriteEquations(set), "X*2\r\n\r\nIF{[X] > [1]};THEN{a=1}\r\n\xB5*X\r\n\r\n\r\n\r\n\r\n");
  EquationSet back;
  back.EquString.fill("old");
  ParseEquations(WriteEquations(set), back);
  EXPECT_EQ(back.EquString, set.EquString);
  EXPECT_EQ(back.ApplyToCH, EquationSet().ApplyToCH) << "ticks are not in it";

  back.EquString.fill("old");
  ParseEquations("X\n\nY\tZ\x01;2", back);
  EXPECT_EQ(back.EquString, (std::array<std::string, 8>{"X", "", "Y Z ;2", "old", "old", "old", "old", "old"}));
}

TEST(EquationFile, SaysWhyItCannotBeReadAndTouchesNothing) {
  SimHost host(1, {2010, 1, 2, 12, 0, 0, 0});
  EquationSet set;
  set.EquString.fill("old");
  EXPECT_FALSE(LoadEquationFile(host.disk, "/none.equ", set));
  EXPECT_FALSE(SaveEquationFile(host.disk, "/no folder/a.equ", set));
  host.disk.Put("/long.equ", "X\r\n" + std::string(4001, '1') + "\r\n");
  const Outcome loaded = LoadEquationFile(host.disk, "/long.equ", set);
  ASSERT_FALSE(loaded);
  EXPECT_EQ(loaded.Words(), "Equation of channel 2 is too long: it may have 4000 characters");
  EXPECT_EQ(set.EquString[0], "old");
  set.EquString[7] = std::string(4001, '1');
  EXPECT_FALSE(SaveEquationFile(host.disk, "/a.equ", set));
}

class EquationTrial : public testing::Test {
 protected:
  EquationTrial() {
    window.run.ChannelValue = {0, 2.5};
    window.chart.AddTime(40180.5);
  }

  std::string Try(const std::string& equation, std::optional<std::string> x = "5") {
    extremes = ExtremesOf(window.chart);
    return TryEquation(equation, SampleOfChart(window, 0, extremes), [&] {
      ++questions;
      return x;
    });
  }

  ChartWindow window;
  ChannelExtremes extremes;
  int questions = 0;
};

TEST_F(EquationTrial, TellsWhatItPutInAndTheSolution) {
  EXPECT_EQ(Try("x*2+z2+Snum"),
            "Subitituted 5. for X\nSubitituted 0. for Snum\nSubitituted 2.5 for Z2\n"
            "Testing Equation ...\n5.0*2+2.5+ 0 = \nSolution: 12.5");
  EXPECT_EQ(questions, 1);
  EXPECT_EQ(Try("a=TDay;a*2"), "Subitituted 40180.5 for TDay\nTesting Equation ...\na=40180.5;a*2 = \nSolution: 80361");
  EXPECT_EQ(questions, 1) << "without an X nothing is asked";
}

TEST_F(EquationTrial, ReportsWhichBranchRan) {
  EXPECT_EQ(Try("IF{X-5};THEN{Y=100};ELSE{Y=X};Y*2"),
            "Subitituted 5. for X\n5.0-5 is false\nELSE{Y=5.0} ran\n"
            "Testing Equation ...\n5.0-5;Y=100;Y=5.0;Y*2 = \nSolution: 10");
  EXPECT_NE(Try("IF{1};THEN{2};ELSE{3}").find("1 is true\nTHEN{2} ran\nTesting"), std::string::npos);
}

TEST_F(EquationTrial, SaysWhyThereIsNone) {
  EXPECT_EQ(Try("  "), "No Equation to Test");
  EXPECT_EQ(Try("X+Z1[-1]"), "Sorry we cannot test offset data here.");
  EXPECT_EQ(Try("X", std::nullopt), "");
  EXPECT_TRUE(Try("1/0").ends_with("Division by zero")) << Try("1/0");
  EXPECT_TRUE(Try("IF{1/0};THEN{1};ELSE{2}").ends_with("Division by zero")) << Try("IF{1/0};THEN{1};ELSE{2}");
  window.run.ChannelValue[1] = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(Try("1;Z2").ends_with("Z2 is no finite number: the channel keeps its value")) << Try("1;Z2");
  EXPECT_EQ(Try(std::string(4001, '1')), "Equation too long");
  EXPECT_NE(Try("exp(x)").find("Undefined Function"), std::string::npos) << "its x is an X here";
}

}  // namespace
}  // namespace tarvolt
