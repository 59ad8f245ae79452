#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "automation/channel_equations/channel_equations.h"
#include "automation/channel_equations/text_program.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  int Upto(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  template <typename Choices>
  const auto& Of(const Choices& choices) {
    return choices[static_cast<std::size_t>(Upto(static_cast<int>(std::size(choices))))];
  }
  double Number() {
    static constexpr double kOdd[] = {0,    -0.0, 1,     -1, 5, 0.5, -2.25, 1e-15, -4e-15, 99.999999999999986,
                                      1e15, 1e20, -1e300};
    switch (Upto(8)) {
      case 0:
        return Of(kOdd);
      case 1:
        return std::bit_cast<double>(std::uint64_t{engine_()} << 32 | engine_());  // also what is no number
      case 2:
        return Upto(2000) - 1000;
      default:
        return (Upto(2000001) - 1000000) / std::array{1.0, 7.0, 1000.0, 1e7, 3e13}[static_cast<std::size_t>(Upto(5))];
    }
  }

 private:
  std::mt19937 engine_;
};

std::string Formula(Dice& dice, int depth) {
  static const std::string kLeaves[] = {
      "X",        "X",        "Z1",       "Z2", "Z3[-1]", "Z1[1]", "Z2[ -2]", "Snum", "TDay", "TSDay", "MsgData1",
      "MsgData2", "DataMin1", "DataMax2", "2",  "0.5",    "10",    "a",       "b",    "pi",   "rnd",   "nix"};
  static const std::string kOperators[] = {"+", "-", "*", "/", "^", " mod ", "%", "\\", " "};
  static const std::string kHeads[] = {"sin(", "abs(", "sqr(", "int(", "exp(", "-(", "("};
  if (depth == 0 || dice.Upto(3) == 0) return dice.Of(kLeaves);
  if (dice.Upto(3) == 0) return dice.Of(kHeads) + Formula(dice, depth - 1) + ")";
  if (dice.Upto(6) == 0) return "min(" + Formula(dice, depth - 1) + "," + Formula(dice, depth - 1) + ")";
  return Formula(dice, depth - 1) + dice.Of(kOperators) + Formula(dice, depth - 1);
}

// As people write them.
std::string Program(Dice& dice) {
  static const std::string kComparisons[] = {">", " < ", "=", ">=", "<>", " AND ", "or"};
  std::string text;
  for (int left = 1 + dice.Upto(4); left > 0; --left) {
    switch (dice.Upto(6)) {
      case 0:
        text += "IF{[" + Formula(dice, 1) + "]" + dice.Of(kComparisons) + "[" + Formula(dice, 1) + "]};THEN{" +
                Formula(dice, 1) + "};ELSE{b=" + Formula(dice, 1) + "};";
        break;
      case 1:
        text += "IF{" + Formula(dice, 1) + "};THEN{a=" + Formula(dice, 2) + "};";
        break;
      case 2:
        text += (dice.Upto(2) == 0 ? "a=" : " b = ") + Formula(dice, 2) + ";";
        break;
      default:
        text += Formula(dice, 3) + ";";
    }
  }
  return text;
}

// Pieces in any order, so that numbers grow together with names and with each other.
std::string Rubble(Dice& dice) {
  static const std::string kPieces[] = {
      "X",    "X",       "Z",        "Z1",   "Z2",      "Z3[",      "Z1[-1]", "[", "]",    "TDay",  "TSDay",
      "Snum", "MsgData", "MsgData1", "Data", "DataMin", "DataMax1", "DataM",  "1", "2",    ".",     "5.",
      "a",    "b",       "e",        "=",    "=",       ";",        ";",      ";", "IF{",  "THEN{", "ELSE{",
      "}",    "}",       "+",        "-",    "*",       "^",        "(",      ")", " ",    " mod",  "mod ",
      "sin(", "min(",    ",",        ">",    "<",       "n",        "ax",     "E", "\x01", "\xE9"};
  std::string text;
  for (int left = 1 + dice.Upto(16); left > 0; --left) text += dice.Of(kPieces);
  return text;
}

/// Runs the same equations over the same samples as they are defined and as they are compiled.
class Pair {
 public:
  explicit Pair(Dice& dice) : dice_(dice) {
    for (ChartWindow* window : {&asText_, &compiled_}) window->chart.SetChannelCount(3);
    for (int i = 0; i < 8; ++i) {
      const double values[] = {dice.Number(), dice.Number(), dice.Number()};
      for (ChartWindow* window : {&asText_, &compiled_}) {
        window->chart.AddTime(40180.25 + i * 0.1);
        for (int channel = 0; channel < 3; ++channel) window->chart.SetValue(channel, i, values[channel]);
      }
    }
    extremes_ = ExtremesOf(asText_.chart);
  }

  void Compare(const EquationSet& set) {
    for (int sample = 0; sample < 12; ++sample) {
      std::array<double, 8> values{};
      for (double& value : values) value = dice_.Number();
      asText_.run.MsgData = compiled_.run.MsgData = values;
      for (double& value : values) value = dice_.Number();
      asText_.run.ChannelValue = compiled_.run.ChannelValue = values;
      const std::int32_t index = dice_.Upto(8);
      Define(set, SampleOfChart(asText_, index, extremes_));
      equations_.ApplyEquation(set, 3, SampleOfChart(compiled_, index, extremes_), compiled_.run);
      for (std::size_t channel = 0; channel < 3; ++channel) {
        ASSERT_EQ(std::bit_cast<std::uint64_t>(asText_.run.ChannelValue[channel]),
                  std::bit_cast<std::uint64_t>(compiled_.run.ChannelValue[channel]))
            << set.EquString[channel] << " of " << NumberText(values[channel]) << " in channel " << channel << " is "
            << NumberText(asText_.run.ChannelValue[channel]) << ", not "
            << NumberText(compiled_.run.ChannelValue[channel]);
      }
    }
  }

 private:
  void Define(const EquationSet& set, const EquationSample& sample) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
      const std::string text = Trim(set.EquString[channel]);
      if (text.empty()) continue;
      const auto value = RunAsText(state_, text, sample, asText_.run.ChannelValue[channel]);
      if (value) asText_.run.ChannelValue[channel] = *value;
    }
  }

  Dice& dice_;
  ChartWindow asText_;
  ChartWindow compiled_;
  ChannelExtremes extremes_;
  EquationState state_{1};
  ChannelEquations equations_{1};
};

template <typename Make>
int CompareMany(unsigned seed, int count, Make make) {
  Dice dice(seed);
  int compiled = 0;
  for (int i = 0; i < count && !testing::Test::HasFatalFailure(); ++i) {
    EquationSet set;
    for (std::size_t channel = 0; channel < 3; ++channel) {
      set.EquString[channel] = make(dice);
      set.ApplyToCH[channel] = 1;
      compiled += CompiledProgram::Compile(Trim(set.EquString[channel])) ? 1 : 0;
    }
    Pair(dice).Compare(set);
  }
  return compiled;
}

TEST(CompiledEquations, GiveWhatTheTextGives) {
  constexpr int kSets = 4000;
  const int compiled = CompareMany(20, kSets, Program);
  EXPECT_GT(compiled, kSets * 3 * 9 / 10) << "what people write is compiled";
}

TEST(CompiledEquations, GiveWhatAnyTextGives) {
  constexpr int kSets = 12000;
  const int compiled = CompareMany(21, kSets, Rubble);
  EXPECT_GT(compiled, kSets * 3 / 4);
  EXPECT_LT(compiled, kSets * 3) << "some are matters of text";
}

TEST(CompiledEquations, KnowWhatIsAMatterOfText) {
  for (const char* text : {"ZX", "Z1[X]", "Z1[Snum]", "MsgDataTDay", "DataMinTDayDataM", "ZZ1", "aX=1", "Z2[Z1]"}) {
    EXPECT_FALSE(CompiledProgram::Compile(text)) << text;
  }
  for (const char* text : {"X", "Z1[-1]", "X=1", "IF{[X]>[Z2]};THEN{a=X};2X", "DataMin1+TSDay*Snum", "Z1[2"}) {
    EXPECT_TRUE(CompiledProgram::Compile(text)) << text;
  }
}

}  // namespace
}  // namespace tarvolt
