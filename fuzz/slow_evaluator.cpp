// SPDX-License-Identifier: GPL-3.0-or-later
#include "slow_evaluator.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <variant>
#include <vector>

namespace tarvolt {
namespace {

using Null = std::monostate;
using Item = std::variant<Null, std::string, double>;

[[noreturn]] void Fail(int number, const std::string& words = "") {
  throw SlowResult{number, 0, words};
}

double Finite(double value) {
  return std::isfinite(value) ? value : (Fail(6), 0);
}

double Over(double a, double b) {
  return b == 0 ? (Fail(11), 0) : Finite(a / b);
}

double Root(double x) {
  return x < 0 ? (Fail(5), 0) : std::sqrt(x);
}

double Log(double x) {
  return x <= 0 ? (Fail(5), 0) : std::log(x);
}

std::int64_t Long(double x) {
  double whole = std::floor(x);
  const double rest = x - whole;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0)) ++whole;
  if (whole < -2147483648.0 || whole > 2147483647.0) Fail(6);
  return static_cast<std::int64_t>(whole);
}

double Remain(double x, double y) {
  const std::int64_t a = Long(x);
  const std::int64_t b = Long(y);
  return b == 0 ? (Fail(11), 0) : static_cast<double>(a - a / b * b);
}

double ToPower(double x, double y) {
  if (x == 0 && y < 0) Fail(11);
  if (x < 0 && std::floor(y) != y) Fail(5);
  if (y == 2 || y == 3) return Finite(y == 2 ? x * x : x * x * x);
  return Finite(y == 4 ? (x * x) * (x * x) : std::pow(x, y));
}

double DoubleOf(const Item& item) {
  if (const double* value = std::get_if<double>(&item)) return *value;
  const std::string* text = std::get_if<std::string>(&item);
  if (text == nullptr || text->find_first_not_of("0123456789.") != std::string::npos) Fail(1103, "Invalid Equation");
  if (text->find('.') != text->rfind('.') || *text == ".") Fail(1103, "Invalid Equation");
  return Finite(std::strtod(text->c_str(), nullptr));
}

using One = std::function<double(double)>;
using Two = std::function<double(double, double)>;

std::map<std::string, One> FunctionsOfOne(bool degrees) {
  const double in = degrees ? 0.017453292519943278 : 1;
  const double out = degrees ? 57.29577951308238 : 1;
  return {{"not", [](double x) { return static_cast<double>(-Long(x) - 1); }},
          {"sin", [=](double x) { return std::sin(x * in); }},
          {"atn", [=](double x) { return std::atan(x) * out; }},
          {"arcsin", [=](double x) { return std::atan(Over(x, Root(1 - Finite(x * x)))) * out; }},
          {"exp", [](double x) { return std::exp(x); }},
          {"int", [](double x) { return std::floor(x); }},
          {"log", Log},
          {"sqr", Root}};
}

std::map<std::string, Two> FunctionsOfTwo() {
  return {{"min", [](double x, double y) { return y < x ? y : x; }}, {"mod", Remain}, {"logn", [](double x, double y) {
                                                                                         return Over(Log(x), Log(y));
                                                                                       }}};
}

struct Lists {
  std::vector<Item> tokens;
  std::vector<int> priorities;
  int top = 7;

  void Add(const Item& token, int priority) {
    tokens.push_back(token);
    priorities.push_back(priority);
  }
};

Lists Scan(const std::string& text) {
  Lists lists;
  int kind = 0;
  int base = 0;
  bool seenOperand = false;
  std::string token;
  const auto finish = [&] {
    if (kind != 0) lists.Add(token, kind == 1 ? base + 6 : 0);
    kind = 0;
    token.clear();
  };
  for (const char c : text) {
    if ((c >= 'a' && c <= 'z') || c == '_') {
      if (kind == 2) {
        finish();
        lists.Add("*", base + 3);
      }
      if (kind == 0) kind = 1;
      token += c;
      seenOperand = true;
    } else if (std::isdigit(static_cast<unsigned char>(c)) != 0 || c == '.') {
      if (kind == 0) kind = 2;
      token += c;
      seenOperand = true;
    } else if (c == '(') {
      if (kind == 1) {
        lists.Add(token + "(", base + 7);
        token.clear();
      } else {
        if (kind == 2) {
          finish();
          lists.Add("*", base + 3);
        }
        lists.Add("(", base + 7);
      }
      base += 7;
      lists.top = std::max(lists.top, base + 7);
      seenOperand = false;
      kind = 0;
    } else if (std::string("*/\\+-^%,)").find(c) != std::string::npos) {
      finish();
      if (c == '*' || c == '/' || c == '\\') lists.Add(std::string(1, c), base + 3);
      if (c == '+') lists.Add("+", base + 1);
      if (c == '-' && seenOperand) lists.Add("-", base + 1);
      if (c == '-' && !seenOperand) lists.Add("~", base + 4);
      if (c == '^') lists.Add("^", base + 5);
      if (c == '%') lists.Add("%", base + 2);
      if (c == ',') lists.Add(Null{}, 0);
      if (c == ')') lists.Add(")", base);
      if (c == ')') base -= 7;
      seenOperand = c == ')';
    }
  }
  finish();
  if (base != 0) Fail(1100, "Unbalanced parenthesis");
  return lists;
}

std::vector<std::size_t> Order(const Lists& lists) {
  std::vector<std::size_t> order;
  for (int priority = 1; priority <= lists.top; ++priority) {
    for (std::size_t i = lists.tokens.size(); i-- > 0;) {
      if (lists.priorities[i] == priority) order.insert(order.begin(), i);
    }
  }
  return order;
}

class Solver {
 public:
  Solver(Lists lists, const std::map<std::string, double>& variables, bool degrees)
      : array_(std::move(lists.tokens)), variables_(variables), one_(FunctionsOfOne(degrees)), two_(FunctionsOfTwo()) {}

  double Solve(const std::vector<std::size_t>& order) {
    for (std::size_t i = 0; i < order.size(); ++i) {
      const std::string token = std::get<std::string>(array_[order[i]]);
      if (token.back() == '(') {
        Close(order[i], token, order[i + 1]);
        ++i;
      } else if (token == "~") {
        const std::size_t next = Next(order[i]);
        array_[next] = -DoubleOf(array_[next]);
        array_[order[i]] = Null{};
      } else if (std::string("*/+-\\%^").find(token) != std::string::npos) {
        Operate(order[i], token[0]);
      } else {
        array_[order[i]] = Identify(token);
      }
    }
    for (const Item& item : array_) {
      if (!std::holds_alternative<Null>(item)) return DoubleOf(item);
    }
    Fail(1103, "Invalid Equation");
  }

 private:
  std::size_t Next(std::size_t i) const {
    while (++i < array_.size()) {
      if (!std::holds_alternative<Null>(array_[i])) return i;
    }
    Fail(1103, "Invalid Equation");
  }

  std::size_t Previous(std::size_t i) const {
    while (i-- > 0) {
      if (!std::holds_alternative<Null>(array_[i])) return i;
    }
    Fail(1103, "Invalid Equation");
  }

  void Operate(std::size_t i, char symbol) {
    const std::size_t previous = Previous(i);
    const double a = DoubleOf(array_[previous]);
    const std::size_t next = Next(i);
    const double b = DoubleOf(array_[next]);
    double value = 0;
    if (symbol == '*') value = Finite(a * b);
    if (symbol == '/') value = Over(a, b);
    if (symbol == '+') value = Finite(a + b);
    if (symbol == '-') value = Finite(a - b);
    if (symbol == '\\') {
      const std::int64_t dividend = Long(a);
      const std::int64_t divisor = Long(b);
      if (divisor == 0) Fail(11);
      value = static_cast<double>(Long(static_cast<double>(dividend / divisor)));
    }
    if (symbol == '%') value = Remain(a, b);
    if (symbol == '^') value = ToPower(a, b);
    array_[previous] = value;
    array_[i] = Null{};
    array_[next] = Null{};
  }

  double Identify(const std::string& name) const {
    if (name == "pi") return 3.14159265358979;
    if (name == "e") return 2.718281828;
    const auto found = variables_.find(name);
    return found != variables_.end() ? found->second : (Fail(1102, "Undefined Variable: " + name), 0);
  }

  void Close(std::size_t open, const std::string& token, std::size_t close) {
    std::vector<std::size_t> inner;
    for (std::size_t i = open + 1; i < close; ++i) {
      if (!std::holds_alternative<Null>(array_[i])) inner.push_back(i);
    }
    if (token == "(") {
      const Item value = inner.empty() ? Item(Null{}) : array_[inner[0]];
      if (!inner.empty()) array_[inner[0]] = Null{};
      array_[open] = value;
    } else {
      array_[open] = ValueOf(token.substr(0, token.size() - 1), inner);
      for (const std::size_t i : inner) array_[i] = Null{};
    }
    array_[close] = Null{};
  }

  double ValueOf(const std::string& name, const std::vector<std::size_t>& inner) const {
    const bool takesOne = one_.count(name) > 0;
    if (!takesOne && two_.count(name) == 0) Fail(1101, "Undefined Function: " + name + "()");
    if (inner.size() != (takesOne ? 1u : 2u)) Fail(1104, "Invalid arguments to function: " + name + "()");
    const double x = DoubleOf(array_[inner[0]]);
    return Finite(takesOne ? one_.at(name)(x) : two_.at(name)(x, DoubleOf(array_[inner[1]])));
  }

  std::vector<Item> array_;
  const std::map<std::string, double>& variables_;
  std::map<std::string, One> one_;
  std::map<std::string, Two> two_;
};

}  // namespace

SlowResult EvaluateSlowly(std::string text, const std::map<std::string, double>& variables, bool degrees) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (std::size_t at = text.find(" mod "); at != std::string::npos; at = text.find(" mod ", at + 1)) {
    text[at] = '%';
    text.erase(at + 1, 4);
  }
  try {
    Lists lists = Scan(text);
    const std::vector<std::size_t> order = Order(lists);
    return {0, Solver(std::move(lists), variables, degrees).Solve(order), ""};
  } catch (const SlowResult& failed) {
    return failed;
  }
}

}  // namespace tarvolt
