#include "automation/channel_equations/eq_compare.h"

#include <gtest/gtest.h>

#include <utility>

namespace tarvolt {
namespace {

bool Holds(const std::string& text) {
  EquationState state(1);
  for (const auto& [name, value] : {std::pair("x", "5"), std::pair("y", "-5")}) {
    state.Solve(value);
    state.Assign(name);
  }
  return EqCompare(state, text);
}

TEST(EqCompare, ComparesByItsOperator) {
  for (const char* text :
       {"[x]>[y]", "[x] > [y+9]", "[y]<[x]", "[x]=[2+3]", "[x]>=[5]", "[x]=>[5]", "[y]<=[-5]", "[y]=<[x]", "[x]<>[y]",
        "[6]AND[3]", "[x] and [4.4]", "[0] Or [y]", "[6]XOR[3]", "[6]xor[6]"}) {
    EXPECT_TRUE(Holds(text)) << text;
  }
  for (const char* text : {"[y]>[x]", "[x]>[5]", "[x]<[5]", "[x]=[y]", "[x]>=[5.1]", "[x]<=[4.9]", "[x]<>[5]",
                           "[x]AND[2]", "[0]OR[0.4]", "[x]NEAR[x]", "[x][x]"}) {
    EXPECT_FALSE(Holds(text)) << text;
  }
}

TEST(EqCompare, WithoutASecondExpressionItAsksForNotZero) {
  for (const char* text : {"x", "x+y+1", "[x]", "IF [y] THEN"}) EXPECT_TRUE(Holds(text)) << text;
  for (const char* text : {"x+y", "[x+y]", "[x", "]x[", "[x]>[y"}) EXPECT_FALSE(Holds(text)) << text;
}

TEST(EqCompare, WhatCannotBeSolvedIsAFault) {
  for (const char* text : {"[1/0]>[x]", "[x]>[z]", "[]", ""}) EXPECT_THROW(Holds(text), EquationError) << text;
}

}  // namespace
}  // namespace tarvolt
