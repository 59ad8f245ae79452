// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/replay_source.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <string_view>

#include "text/number.h"

namespace tarvolt::uds {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kSeparators = ",;";

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
}

/// Cuts the number at the start of `text` off it; nothing when there is no finite number up to the next separator.
std::optional<double> TakeNumber(std::string_view& text) {
  std::size_t end = std::min(text.find_first_of(" \t\r,;"), text.size());
  std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
  if (result.ec != std::errc() || result.ptr != word.data() + word.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

/// True when a separator stood in front of another number.
bool SkipSeparator(std::string_view& text) {
  SkipBlanks(text);
  if (text.empty() || kSeparators.find(text[0]) == std::string_view::npos) return false;
  text.remove_prefix(1);
  SkipBlanks(text);
  return true;
}

/// The numbers of a line without its comment; nothing when it holds anything else.
std::optional<std::vector<double>> NumbersOf(std::string_view line) {
  std::vector<double> numbers;
  SkipBlanks(line);
  bool expected = false;
  while (!line.empty() || expected) {
    const std::optional<double> number = TakeNumber(line);
    if (!number) return std::nullopt;
    numbers.push_back(*number);
    expected = SkipSeparator(line);
  }
  return numbers;
}

std::string CountText(std::size_t count) {
  return NumberText(static_cast<std::int64_t>(count));
}

}  // namespace

std::unique_ptr<ReplaySource> ReplaySource::Read(std::istream& text, std::string& why) {
  auto replay = std::make_unique<ReplaySource>();
  std::array<char, kLongestLine + 1> buffer;
  std::size_t number = 1;
  for (; text.getline(buffer.data(), buffer.size()); ++number) {
    // The count takes in the line end, which the last line may lack. A zero byte does not end a line.
    const auto length = static_cast<std::size_t>(text.gcount()) - (text.eof() ? 0 : 1);
    if (!replay->AddLine(std::string_view(buffer.data(), length), why)) {
      why = "line " + CountText(number) + ": " + why;
      return nullptr;
    }
  }
  if (text.bad()) {
    why = "it cannot be read";
    return nullptr;
  }
  if (!text.eof()) {
    why = "line " + CountText(number) + ": longer than " + CountText(kLongestLine) + " characters";
    return nullptr;
  }
  if (replay->values_.empty()) {
    why = "there are no numbers in it";
    return nullptr;
  }
  return replay;
}

std::unique_ptr<ReplaySource> ReplaySource::ReadFile(const std::filesystem::path& path, std::string& why) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    why = "it cannot be opened";
    return nullptr;
  }
  return Read(file, why);
}

bool ReplaySource::AddLine(std::string_view line, std::string& why) {
  const std::optional<std::vector<double>> numbers = NumbersOf(line.substr(0, line.find('#')));
  if (!numbers) {
    why = "not numbers alone";
    return false;
  }
  if (numbers->empty()) return true;
  if (numbers->size() > kMostChannels) {
    why = "more than 8 values";
    return false;
  }
  if (channels_ == 0) channels_ = static_cast<int>(numbers->size());
  if (numbers->size() != static_cast<std::size_t>(channels_)) {
    why = CountText(numbers->size()) + " values, but " + CountText(static_cast<std::size_t>(channels_)) +
          " in the lines before";
    return false;
  }
  if (values_.size() + numbers->size() > kMostValues) {
    why = "more than " + CountText(kMostValues) + " values in the file";
    return false;
  }
  values_.insert(values_.end(), numbers->begin(), numbers->end());
  return true;
}

std::optional<std::vector<double>> ReplaySource::Set(std::int64_t number) const {
  const auto width = static_cast<std::int64_t>(channels_);
  if (number < 0 || number >= static_cast<std::int64_t>(values_.size()) / width) return std::nullopt;
  const auto first = values_.begin() + number * width;
  return std::vector<double>(first, first + width);
}

}  // namespace tarvolt::uds
