// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace tarvolt {

/// Why something failed, in words that a person may read.
struct Failure {
  std::string words;
};

/// What an operation gives, or why it failed. True when it succeeded; the value may be asked for only then, the words
/// only otherwise.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : held_(std::move(value)) {}
  Result(Failure failure) : held_(std::move(failure)) {}

  explicit operator bool() const { return std::holds_alternative<T>(held_); }
  T& operator*() { return std::get<T>(held_); }
  const T& operator*() const { return std::get<T>(held_); }
  T* operator->() { return &std::get<T>(held_); }
  const T* operator->() const { return &std::get<T>(held_); }
  const std::string& Words() const { return std::get<Failure>(held_).words; }

 private:
  std::variant<T, Failure> held_;
};

/// The same for an operation that gives nothing but its success: `return Done();` or `return Failure{"..."};`.
using Outcome = Result<std::monostate>;
inline std::monostate Done() {
  return {};
}

}  // namespace tarvolt
