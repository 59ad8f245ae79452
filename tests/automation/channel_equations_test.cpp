// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/channel_equations.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include "automation/channel_equations/printed_number.h"
#include "automation/channel_equations/text_program.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr TimeStamp kNoon = 40180.5;

/// A window with a chart of three channels: sample i has i, 10 i and -i, and stands i seconds behind noon.
class ChannelEquationsTest : public testing::Test {
 protected:
  ChannelEquationsTest() {
    window_.chart.SetChannelCount(3);
    for (int i = 0; i < 10; ++i) Add(i);
  }

  void Add(int i) {
    const std::int32_t index = window_.chart.AddTime(kNoon + i / 86400.0);
    window_.chart.SetValue(0, index, i);
    window_.chart.SetValue(1, index, 10 * i);
    window_.chart.SetValue(2, index, -i);
  }

  EquationSample OfChart(std::int32_t index) {
    extremes_ = ExtremesOf(window_.chart);
    return SampleOfChart(window_, index, extremes_);
  }

  /// The new value of channel 1 with value `x`. However the equation is run, it must be what its text gives.
  double Apply(const std::string& equation, double x, const EquationSample& sample) {
    EquationSet set;
    set.EquString[0] = equation;
    set.ApplyToCH[0] = 1;
    window_.run.ChannelValue[0] = x;
    const std::string text = Trim(equation);
    const bool isRun = text.size() <= kLongestChannelEquation;
    const double ofText = isRun ? RunAsText(textState_, text, sample, x).value_or(x) : x;
    equations_.ApplyEquation(set, 3, sample, window_.run);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(window_.run.ChannelValue[0]), std::bit_cast<std::uint64_t>(ofText))
        << equation << " of " << NumberText(x) << " as text is " << NumberText(ofText);
    return window_.run.ChannelValue[0];
  }
  double Apply(const std::string& equation, double x = 5) { return Apply(equation, x, OfChart(4)); }

  ChartWindow window_;
  ChannelExtremes extremes_;
  std::vector<std::string> reports_;
  EquationState textState_{1};
  ChannelEquations equations_{1, [this](const std::string& words) { reports_.push_back(words); }};
};

TEST_F(ChannelEquationsTest, StatementsRunOneAfterTheOtherAndTheLastSolvedGivesTheValue) {
  EXPECT_EQ(Apply("X*2+1"), 11);
  EXPECT_EQ(Apply("  X*2 ; "), 10);
  EXPECT_EQ(Apply("a=1"), 1);
  EXPECT_EQ(Apply("b = X*3; B+a"), 16);  // a from the line before
}

TEST_F(ChannelEquationsTest, VariablesCarryFromSampleToSampleAndFromChannelToChannel) {
  Apply("s=0");
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(Apply("s=s+X", i), i * (i + 1) / 2);
  EXPECT_EQ(Apply("s"), 10);  // an assignment is solved once, though it changes what it reads
  EquationSet set;
  set.EquString = {"q=X+1", "q*X", "Z1+Z2"};
  set.ApplyToCH = {1, 1, 1};
  window_.run.ChannelValue = {1, 2, 3};
  equations_.ApplyEquation(set, 3, OfChart(0), window_.run);
  EXPECT_EQ(window_.run.ChannelValue[1], 4);
  EXPECT_EQ(window_.run.ChannelValue[2], 6);  // the values of this sample are the new ones
  set.ApplyToCH = {0, 1, 1};
  set.EquString[1] = "   ";
  window_.run.ChannelValue = {1, 2, 3};
  equations_.ApplyEquation(set, 2, OfChart(0), window_.run);
  EXPECT_EQ(window_.run.ChannelValue, (std::array<double, 8>{1, 2, 3}));
}

TEST_F(ChannelEquationsTest, ConditionsChooseBetweenStatements) {
  const std::string clip = "IF{[X] > [100]};THEN{Y=100};ELSE{Y=X};Y*2";
  EXPECT_EQ(Apply(clip, 250), 200);
  EXPECT_EQ(Apply(clip, 30), 60);
  EXPECT_EQ(Apply("7;IF{X-5};THEN{1}", 5), 0) << "what was solved last is the condition";
  EXPECT_EQ(Apply("IF{X-5};THEN{1};ELSE{2};ELSE{3}", 6), 1);
  EXPECT_EQ(Apply("IF{X-5};THEN{1};ELSE{2};ELSE{3}", 5), 3) << "each ELSE of a false condition runs";
  EXPECT_EQ(Apply("IF{X};8;THEN{1};ELSE{2}", 5), 8) << "a statement in between ends the condition";
  EXPECT_EQ(Apply("IF{X};;THEN{1}", 5), 5) << "an empty one too";
  EXPECT_EQ(Apply("THEN{1};9;ELSE{2}", 5), 9) << "without IF neither runs";
  EXPECT_EQ(Apply("IF{nix};THEN{1};ELSE{2}", 5), 2) << "what cannot be solved is false";
}

TEST_F(ChannelEquationsTest, ConditionsCompare) {
  struct Case {
    const char* condition;
    bool holds;
  };
  for (const Case& c : {Case{"[X]=>[5]", true},
                        Case{"[X] >= [6]", false},
                        Case{"[X]=<[4]", false},
                        Case{"[X] <= [5]", true},
                        Case{"[X] <> [5]", false},
                        Case{"[X] < [6]", true},
                        Case{"[X] is = to [5]", true},
                        Case{"[6] and [3]", true},
                        Case{"[4] AND [3]", false},
                        Case{"[4] xor [4]", true},
                        Case{"[0] or [0.5]", false},
                        Case{"[0] Or [X]", true},
                        Case{"[X]", true},
                        Case{"[6]XOR[3]", true},
                        Case{"[X][X]", false},
                        Case{"]X[", false},
                        Case{"IF [X] THEN", true},
                        Case{"[X+1]", true},
                        Case{"X-5", false},
                        Case{"[1/0]>[X]", false},
                        Case{"", false},
                        Case{"[X", false},
                        Case{"[X] > [1", false},
                        Case{"[X] near [5]", false},
                        Case{"[9999999999] or [1]", false}}) {
    EXPECT_EQ(Apply(std::string("IF{") + c.condition + "};THEN{1};ELSE{2}", 5), c.holds ? 1 : 2) << c.condition;
  }
}

TEST_F(ChannelEquationsTest, NumbersArePutInAsText) {
  EXPECT_EQ(Apply("exp(X)", 0), 1);
  EXPECT_EQ(Apply("3;EXP(X)", 2), 3) << "the X of EXP is replaced too";
  EXPECT_EQ(Apply("X^2", -3), -9) << "-3.0^2";
  EXPECT_EQ(Apply("2^X", 2), 4);
  EXPECT_EQ(Apply("6;2^X", -2), 6) << "2^-2.0 is no equation";
  EXPECT_EQ(Apply("2X", 1.5), 21.5);
  EXPECT_EQ(Apply("2X", -1.5), 0.5);
  EXPECT_EQ(Apply("X", 0.123456789012345678), 0.12345678901235) << "fourteen places";
  EXPECT_EQ(Apply("X", -1e-15), 0);
  EXPECT_EQ(Apply("X+1", 1e300), 1e300);
  EXPECT_EQ(Apply("z=3;z+X", 5), 8) << "only Z1 to Z8 are channels";
  window_.run.MsgData = {1.5, -2, 1e20};
  EXPECT_EQ(Apply("MsgData1+MsgData2"), -0.5);
  EXPECT_EQ(Apply("e20=7;MsgData3"), 1 * 2.718281828 + 20) << "1E+20 is 1 times e, plus 20";
  EXPECT_EQ(Apply("9 modSnum"), 1) << "the blank in front of a number makes it \" mod \"";
}

TEST_F(ChannelEquationsTest, OddNumbersGrowTogetherWithTheTextAroundThem) {
  window_.run.MsgData = {-4e-15, 1e15};
  window_.run.ChannelValue[1] = -2.25;
  for (const double x : {0.0, -0.0, 1.0, -3.0, 0.5, -2.25, 1e-15, -4e-15, 99.999999999999986, 1 / 7.0, 1e20, -1e300}) {
    for (const char* equation : {"2X.5",
                                 "X5",
                                 "5.X",
                                 "X^X",
                                 "X mod 3",
                                 "1 modX",
                                 "sin(X)-X*Z2^2",
                                 "a=X;b=aX;min(b,X)",
                                 "Z1[-1]X",
                                 "X,Z2",
                                 "rnd*X",
                                 "IF{[X]>=[Z2]};THEN{a=-X};ELSE{XX};a-X",
                                 "IF{X};THEN{Z2}",
                                 "MsgData1X+MsgData2",
                                 "Z2[ -2]X",
                                 "(X)-X",
                                 "X(2)",
                                 "DataMin1XDataMax2",
                                 "X\\2%X",
                                 "\xE9X=X",
                                 "TDayX",
                                 "e=X;eX",
                                 "X}",
                                 "IF{[X<[1]};9",
                                 "1E5X",
                                 "X\x01X"}) {
      Apply(equation, x);
    }
  }
}

TEST(CompiledProgram, LeavesWhatIsAMatterOfTextToTheText) {
  for (const char* text : {"ZX", "Z1[X]", "Z1[Snum]", "MsgDataTDay", "DataMinTDayDataM", "ZZ1", "aX=1", "Z2[Z1]"}) {
    EXPECT_FALSE(CompiledProgram::Compile(text)) << text;
  }
  for (const char* text : {"X", "Z1[-1]", "X=1", "IF{[X]>[Z2]};THEN{a=X};2X", "DataMin1+TSDay*Snum", "Z1[2"}) {
    EXPECT_TRUE(CompiledProgram::Compile(text)) << text;
  }
}

TEST_F(ChannelEquationsTest, SamplesTimesAndExtremesOfAChartAtRest) {
  EXPECT_EQ(Apply("Z2+Z3", 5), 0);
  window_.run.ChannelValue[1] = 7;
  EXPECT_EQ(Apply("Z2*2", 5), 14);
  EXPECT_EQ(Apply("Z1[-1]+Z1[1]+Z2[0]*100"), 3 + 5 + 4000);
  EXPECT_EQ(Apply("Z3[5]"), -9);
  EXPECT_EQ(Apply("Z8[0]"), 0) << "a channel that the chart does not have";
  EXPECT_EQ(Apply("Z1[X]", 2), 6);
  EXPECT_EQ(Apply("1;Z1[6]", 5), 5) << "there is no such sample: the value stays";
  EXPECT_EQ(Apply("a=77;Z1[-5]", 5), 5);
  EXPECT_EQ(Apply("a"), 77) << "what came before it was done";
  EXPECT_EQ(Apply("Snum"), 4);
  EXPECT_EQ(Apply("DataMax2-DataMin3"), 99);
  EXPECT_EQ(Apply("TDay"), AsPrinted(kNoon + 4 / 86400.0, 12));
  EXPECT_NEAR(Apply("TSDay*86400"), 4, 1e-5);
}

TEST_F(ChannelEquationsTest, ExtremesHaveThePictureOfTheValue) {
  const double lowest = 0.0123456789012345;
  const double highest = 0.0987654321098765;
  for (int i = 0; i < 10; ++i) window_.chart.SetValue(2, i, i == 5 ? highest : lowest);
  const std::string normalised = "(X-DataMin3)/(DataMax3-DataMin3)";
  EXPECT_NEAR(Apply(normalised, lowest), 0, 1e-12);
  EXPECT_NEAR(Apply(normalised, highest), 1, 1e-12);
}

TEST_F(ChannelEquationsTest, WhatIsNoFiniteNumberLeavesTheValue) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(std::isnan(Apply("4;X+1", std::nan(""))));
  EXPECT_EQ(Apply("IF{[X]>[1]};THEN{9};ELSE{8}", -kInfinity), -kInfinity);
  EXPECT_EQ(Apply("Z2*2", std::nan("")), 2 * window_.run.ChannelValue[1]) << "it does not read its X";
  window_.run.ChannelValue[1] = kInfinity;
  window_.run.MsgData[0] = kInfinity;
  window_.chart.SetValue(1, 2, std::nan(""));
  for (const char* equation : {"Z2", "1;MsgData1", "ZX+Z2", "Z2[-2]", "a=3;Z2"})
    EXPECT_EQ(Apply(equation, 5), 5) << equation;
  EXPECT_EQ(Apply("a"), 3) << "what came before it was done";
  EXPECT_TRUE(reports_.empty());
}

TEST_F(ChannelEquationsTest, ARunSeesNoLaterSample) {
  window_.run.Dcount = 9;
  window_.run.CurrentStamp = window_.chart.GetTime(9);
  const EquationSample newest = SampleOfRun(window_, 9);
  EXPECT_EQ(Apply("Z1[-1]", 5, newest), 8);
  EXPECT_EQ(Apply("Z1[1]", 5, newest), 5);
  EXPECT_EQ(Apply("Snum", 5, newest), 9);
  EXPECT_NEAR(Apply("TDay", 5, newest), 0.5 + 9 / 86400.0, 1e-9);
  EXPECT_EQ(Apply("TSDay", 5, newest), 0);
  window_.run.Dcount = 1009;  // a chart that has let its first thousand samples go
  const EquationSample late = SampleOfRun(window_, 9);
  EXPECT_EQ(Apply("Z1[-2]+Snum", 5, late), 7 + 1009);
  EXPECT_EQ(Apply("Z1[-10]", 5, late), 5);
}

TEST_F(ChannelEquationsTest, WhatIsNotSolvedLeavesTheLastSolution) {
  Apply("1/4");
  EXPECT_EQ(Apply("1/0", 5), 0.25);
  EXPECT_EQ(Apply("a=nix;(2", 5), 0.25);
}

TEST_F(ChannelEquationsTest, AFaultIsReportedOnceALog) {
  Apply("2;;a = 1/X", 0);
  EXPECT_EQ(Apply("2;;a = 1/X", 0), 2);
  Apply("IF{nix};THEN{1}");
  EXPECT_EQ(reports_,
            (std::vector<std::string>{"Equation of channel 1, statement 3 \"a = 1/X\": Division by zero",
                                      "Equation of channel 1, statement 1 \"IF{nix}\": Undefined Variable: nix"}));
  equations_.LogBegan();
  Apply("IF{nix};THEN{1}");
  EXPECT_EQ(reports_.size(), 3u);
  EXPECT_EQ(Apply(std::string(4001, '1'), 5), 5);
  EXPECT_EQ(reports_.back(), "Equation of channel 1 is too long: it may have 4000 characters");
  Apply("ZX;nix", 5);
  EXPECT_EQ(reports_.back(), "Equation of channel 1, statement 1 \"ZX\": Invalid Equation") << "solved as text";
}

TEST_F(ChannelEquationsTest, TheCheckFindsWhatNoNumberWouldSolve) {
  const auto check = [&](const std::string& first, const std::string& second) {
    EquationSet set;
    set.EquString = {first, second, "(never applied"};
    set.ApplyToCH = {1, 1};
    const Outcome outcome = equations_.Check(set, 3);
    return outcome ? std::string() : outcome.Words();
  };
  Apply("known=1");
  for (const char* fine :
       {"2^X", "d=X-p; p=X; d", "IF{[Snum]=[0]};THEN{s=0};s=s+known", "1/(X-1);;", "later", "X^Z1[X]"}) {
    EXPECT_EQ(check(fine, "later=1"), "") << fine;
  }
  EXPECT_EQ(check("X", "a=2; sqrt(a)"), "Equation of channel 2, statement 2 \"sqrt(a)\": Undefined Function: sqrt()");
  EXPECT_EQ(check("IF{[X]>[1]};THEN{(2};3", ""),
            "Equation of channel 1, statement 2 \"THEN{(2}\": Unbalanced parenthesis");
  EXPECT_EQ(check("IF{[X] near [5]};1", ""),
            "Equation of channel 1, statement 1 \"IF{[X] near [5]}\": \"near\" is no comparison");
  for (const char* faulty : {"s=s+X", "a=b;b=a", "IF{[X]>[nix]};1", "min(X)", "1.5X", "THEN{X+}", "TDAY", ";",
                             "THEN{X*2}", "ELSE{X*2}", "IF{[X]>[1};2"}) {
    EXPECT_NE(check(faulty, "1"), "") << faulty;
  }
}

TEST_F(ChannelEquationsTest, NamesThatNothingCanReadAreNotKept) {
  EquationState state(1);
  EXPECT_FALSE(EquationState::IsReadable("1.5"));
  EXPECT_FALSE(EquationState::IsReadable(""));
  EXPECT_TRUE(EquationState::IsReadable("_a"));
  for (std::size_t i = 0; i < EquationState::kMostVariables + 5; ++i) {
    RunStatement(state, "v" + NumberText(static_cast<std::int64_t>(i)) + "=1");
  }
  RunStatement(state, "v0=2");
  EXPECT_EQ(state.Solve("v0"), 2);
  EXPECT_THROW(state.Solve("v" + NumberText(static_cast<std::int64_t>(EquationState::kMostVariables + 1))),
               EquationError);
}

TEST(AsPrinted, IsWhatThePrintedTextReadsAs) {
  std::uint64_t bits = 1;
  for (int i = 0; i < 300000; ++i) {
    bits = bits * 6364136223846793005u + 1442695040888963407u;
    double value = std::bit_cast<double>(bits);
    if (i % 2 == 0) value = static_cast<double>(static_cast<std::int64_t>(bits)) * std::pow(10, -14 - i % 11);
    if (i % 5 == 0) value = static_cast<double>(static_cast<std::int64_t>(bits >> 40)) / 1000;
    if (!std::isfinite(value)) continue;
    ASSERT_EQ(AsPrinted(value, kValuePlaces), Val(FormatNumber(value, kValuePicture))) << NumberText(value);
    ASSERT_EQ(AsPrinted(value, kDayPlaces), Val(FormatNumber(value, kDayPicture))) << NumberText(value);
  }
  EXPECT_FALSE(std::signbit(AsPrinted(-0.0, kValuePlaces)));
  EXPECT_EQ(AsPrinted(99.999999999999986, kValuePlaces), Val(FormatNumber(99.999999999999986, kValuePicture)));
}

}  // namespace
}  // namespace tarvolt
