// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/channel_equations/datum.h"

namespace tarvolt {

// The rewriting of an equation's text, written once for both of its uses: with the numbers as text, and with marks that
// keep their places (SlottedText). `Numbers` gives what is put in:
//   std::optional<Text> Put(const Datum&);                      any but ZAt
//   std::optional<Text> PutAt(int channel, const Text& offset)
//   void Look(const Text&);                                     called with the text after each step
// Put and PutAt give nothing when there is no such number.

/// What a statement of an equation does.
enum class StatementForm { Plain, If, Then, Else };

template <class Text>
struct RewrittenStatement {
  StatementForm form = StatementForm::Plain;
  Text text;               ///< without the word of its form
  bool isWhole = true;     ///< false when it asks for a number that is not there; its text is of no use then
  std::size_t number = 0;  ///< of the statement, counted from 1
};

template <class Text>
Text TextFrom(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  for (const char c : bytes) text += static_cast<typename Text::value_type>(static_cast<unsigned char>(c));
  return text;
}

template <class Text>
bool Holds(const Text& text, std::string_view what) {
  return text.find(TextFrom<Text>(what)) != Text::npos;
}

/// Replaces every `what` of the text as it stands; what comes in is not looked through.
template <class Text>
void ReplaceEvery(Text& text, std::string_view what, const Text& by) {
  const Text sought = TextFrom<Text>(what);
  std::size_t from = 0;
  Text result;
  for (std::size_t at = text.find(sought); at != Text::npos; at = text.find(sought, from)) {
    result.append(text, from, at - from).append(by);
    from = at + sought.size();
  }
  text = result.append(text, from, Text::npos);
}

/// An equation's text, cut into statements one after the other.
template <class Text, class Numbers>
class StatementReader {
 public:
  /// `numbers` outlives it.
  StatementReader(std::string_view equation, Numbers& numbers) : numbers_(numbers), rest_(TextFrom<Text>(equation)) {
    rest_ += ';';
    isWhole_ = PutAll(TimesAndMessages()) && (!Holds(rest_, "DataM") || PutAll(DataExtremes()));
  }

  /// The next statement; nothing behind the last.
  std::optional<RewrittenStatement<Text>> Next() {
    if (rest_.size() - at_ <= 1) return std::nullopt;
    const std::size_t end = rest_.find(';', at_);
    RewrittenStatement<Text> statement;
    statement.text = rest_.substr(at_, end - at_);
    statement.number = ++count_;
    at_ = end + 1;
    statement.isWhole = isWhole_ && PutX(statement.text) && PutChannels(statement.text);
    if (statement.isWhole) TakeForm(statement);
    return statement;
  }

 private:
  bool PutAll(const std::vector<NamedDatum>& all) {
    return std::all_of(all.begin(), all.end(),
                       [this](const NamedDatum& named) { return PutEvery(rest_, named.name, named.datum); });
  }

  bool PutEvery(Text& text, std::string_view name, const Datum& datum) {
    if (!Holds(text, name)) return true;
    const std::optional<Text> number = numbers_.Put(datum);
    if (!number) return false;
    ReplaceEvery(text, name, *number);
    numbers_.Look(text);
    return true;
  }

  // Every X, be it part of a word or not: functions are written in lower case.
  bool PutX(Text& text) { return PutEvery(text, "X", {DatumKind::X}); }

  bool PutChannels(Text& text) {
    for (int channel = 0; channel < kChannels && Holds(text, "Z"); ++channel) {
      if (!PutOtherSamples(channel, text) || !PutThisSample(channel, text)) return false;
    }
    return true;
  }

  // What comes in may make a name of a "Z" that stands in front of it, so the search goes on there.
  bool PutOtherSamples(int channel, Text& text) {
    const Text name = TextFrom<Text>(std::string{'Z', static_cast<char>('1' + channel), '['});
    for (std::size_t at = text.find(name); at != Text::npos; at = text.find(name, at == 0 ? 0 : at - 1)) {
      const std::size_t close = text.find(']', at);
      const std::size_t end = close == Text::npos ? text.size() : close + 1;
      const std::size_t offset = at + name.size();
      const std::optional<Text> number =
          numbers_.PutAt(channel, text.substr(offset, (close == Text::npos ? end : close) - offset));
      if (!number) return false;
      text.replace(at, end - at, *number);
      numbers_.Look(text);
    }
    return true;
  }

  bool PutThisSample(int channel, Text& text) {
    const Text name = TextFrom<Text>(std::string{'Z', static_cast<char>('1' + channel)});
    for (std::size_t at = text.find(name); at != Text::npos; at = text.find(name, at == 0 ? 0 : at - 1)) {
      const std::optional<Text> number = numbers_.Put({DatumKind::Z, channel});
      if (!number) return false;
      text.replace(at, name.size(), *number);
      numbers_.Look(text);
    }
    return true;
  }

  static void TakeForm(RewrittenStatement<Text>& statement) {
    struct Word {
      std::string_view word;
      StatementForm form;
    };
    for (const Word& word :
         {Word{"IF{", StatementForm::If}, Word{"THEN{", StatementForm::Then}, Word{"ELSE{", StatementForm::Else}}) {
      if (!Holds(statement.text, word.word)) continue;
      statement.form = word.form;
      ReplaceEvery(statement.text, word.word, Text());
      ReplaceEvery(statement.text, "}", Text());
      return;
    }
  }

  Numbers& numbers_;
  Text rest_;
  std::size_t at_ = 0;
  std::size_t count_ = 0;
  bool isWhole_ = true;
};

/// Which statements run, by the conditions in front of them.
class Branching {
 public:
  /// For any form but If: whether the statement runs.
  bool Runs(StatementForm form) {
    if (form == StatementForm::Else) return inIf_ && !condition_;
    if (form == StatementForm::Then && !(inIf_ && condition_)) return false;
    inIf_ = false;
    return true;
  }

  void Decide(bool condition) {
    inIf_ = true;
    condition_ = condition;
  }

 private:
  bool inIf_ = false;
  bool condition_ = false;
};

/// "name = formula" taken apart: there is no name when no "=" stands behind the first character.
template <class Text>
struct Assignment {
  std::optional<Text> name;  ///< without outer blanks
  Text formula;
};

template <class Text>
Assignment<Text> TakeAssignment(const Text& statement) {
  const std::size_t sign = statement.find('=');
  if (sign == Text::npos || sign == 0) return {std::nullopt, statement};
  const std::size_t first = statement.find_first_not_of(' ');
  const std::size_t last = statement.find_last_not_of(' ', sign - 1);
  const bool blank = last == Text::npos || first > last;
  return {blank ? Text() : statement.substr(first, last - first + 1), statement.substr(sign + 1)};
}

}  // namespace tarvolt
