#include "automation/equation/eq_compare.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

bool Holds(std::string_view text) {
  clsEquation equation;
  equation.Var("x", 5);
  equation.Var("y", -5);
  return EqCompare(equation, text);
}

TEST(EqCompare, ComparesByItsOperator) {
  for (const char* text : {"[x]>[y]", "[x] > [y+9]", "[y]<[x]", "[x]=[2+3]", "[x]>=[5]", "[x]=>[5]", "[y]<=[-5]",
                           "[y]=<[x]", "[x]<>[y]", "[6]AND[3]", "[x] and [4.4]", "[0] Or [y]", "[6]XOR[3]"}) {
    EXPECT_TRUE(Holds(text)) << text;
  }
  for (const char* text : {"[y]>[x]", "[x]>[5]", "[x]<[5]", "[x]=[y]", "[x]>=[5.1]", "[x]<=[4.9]", "[x]<>[5]",
                           "[x]AND[2]", "[0]OR[0.4]", "[6]XOR[6]", "[x]NEAR[x]", "[x][x]"}) {
    EXPECT_FALSE(Holds(text)) << text;
  }
}

TEST(EqCompare, WithoutASecondExpressionItAsksForNotZero) {
  for (const char* text : {"x", "x+y+1", "[x]", "IF [y] THEN"}) EXPECT_TRUE(Holds(text)) << text;
  for (const char* text : {"x+y", "[x+y]", "[x", "]x[", "[x]>[y"}) EXPECT_FALSE(Holds(text)) << text;
}

TEST(EqCompare, AFaultIsRaisedAndLeavesTheVariables) {
  clsEquation equation;
  equation.Var("x", 5);
  for (const char* text : {"[1/0]>[x]", "[x]>[z]", "[]", ""}) EXPECT_THROW(EqCompare(equation, text), EquationError);
  EXPECT_TRUE(EqCompare(equation, "[x]=[5]"));
}

}  // namespace
}  // namespace tarvolt
