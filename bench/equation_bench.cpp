// SPDX-License-Identifier: GPL-3.0-or-later
// An equation parsed, and evaluated with new values of its variables, beside the same formula in muParser.

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <array>
#include <cmath>
#include <string>

#include "automation/equation/equation.h"
#include "side_by_side.h"

namespace tarvolt::bench {
namespace {

constexpr int kEvaluationsARound = 20000;
constexpr int kParsesARound = 1000;
constexpr int kRounds = 101;

// Read alike by both.
struct Formula {
  const char* name;
  const char* text;
};

constexpr std::array kFormulas = {
    Formula{"Sine", "sin(x)*2+y"},
    Formula{"Horner", "(((((1.5*x+2)*x-3)*x+4)*x-5)*x+6)*x-7"},
    Formula{"Powers", "2*x^4-3*x^3+4*x^2-5*x+6*y"},
    Formula{"Min", "min(x,y)"},
};

double XOf(int i) {
  return 0.001 * i - 3;
}

double YOf(int i) {
  return 5 - 0.001 * i;
}

struct MuFormula {
  explicit MuFormula(const char* text) {
    parser.DefineVar("x", &x);
    parser.DefineVar("y", &y);
    parser.SetExpr(text);
    parser.Eval();  // this parses
  }

  double x = 1;
  double y = 1;
  mu::Parser parser;
};

// Times `set` for each of the two and the evaluation behind it.
template <typename Set, typename MuSet>
void Compare(benchmark::State& state, clsEquation& equation, MuFormula& mu, Set set, MuSet muSet) {
  double sum = 0;
  double muSum = 0;
  RunSideBySide(
      state, kEvaluationsARound,
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kEvaluationsARound; ++i) {
            set(i);
            equation.Solve();
            sum += equation.Solution();
          }
        });
      },
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kEvaluationsARound; ++i) {
            muSet(i);
            muSum += mu.parser.Eval();
          }
        });
      });
  if (!(std::abs(sum - muSum) <= 1e-9 * std::abs(muSum))) state.SkipWithError("the two do not agree");
}

// The evaluation alone.
void Evaluate(benchmark::State& state, const Formula& formula) {
  clsEquation equation;
  equation.Equation(formula.text);
  equation.Var("x", XOf(0));
  equation.Var("y", YOf(0));
  MuFormula mu(formula.text);
  mu.x = XOf(0);
  mu.y = YOf(0);
  Compare(
      state, equation, mu, [](int) {}, [](int) {});
}

// With new values each time: ours are set by name, muParser's are doubles that it was bound to.
void SetAndEvaluate(benchmark::State& state, const Formula& formula) {
  clsEquation equation;
  equation.Equation(formula.text);
  MuFormula mu(formula.text);
  Compare(
      state, equation, mu,
      [&](int i) {
        equation.Var("x", XOf(i));
        equation.Var("y", YOf(i));
      },
      [&](int i) {
        mu.x = XOf(i);
        mu.y = YOf(i);
      });
}

// One text after the other, as when the sample's values stand in it.
void ParseAndEvaluate(benchmark::State& state, const Formula& formula) {
  clsEquation equation;
  equation.Var("x", 1);
  equation.Var("y", 2);
  MuFormula mu(formula.text);
  const std::array<std::string, 2> texts = {formula.text, std::string(formula.text) + "+1"};
  RunSideBySide(
      state, kParsesARound,
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kParsesARound; ++i) {
            equation.Equation(texts[static_cast<std::size_t>(i % 2)]);
            equation.Solve();
            benchmark::DoNotOptimize(equation.Solution());
          }
        });
      },
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kParsesARound; ++i) {
            mu.parser.SetExpr(texts[static_cast<std::size_t>(i % 2)]);
            benchmark::DoNotOptimize(mu.parser.Eval());
          }
        });
      });
}

void Register(const std::string& name, void (*run)(benchmark::State&, const Formula&), const Formula& formula) {
  benchmark::RegisterBenchmark((name + "/" + formula.name).c_str(), run, formula)
      ->Iterations(Rounds(kRounds))
      ->UseManualTime();
}

void RegisterAll() {
  for (const Formula& formula : kFormulas) {
    Register("Evaluate", Evaluate, formula);
    Register("SetAndEvaluate", SetAndEvaluate, formula);
    Register("ParseAndEvaluate", ParseAndEvaluate, formula);
  }
}

}  // namespace
}  // namespace tarvolt::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  tarvolt::bench::RegisterAll();
  benchmark::RunSpecifiedBenchmarks();
}
