// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <utility>

#include "logs/rich_text.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::size_t kDeepest = 200;
constexpr std::int32_t kTwipsAPixel = 15;
constexpr std::int32_t kLargestPicture = 10000;

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string Utf8Of(std::uint32_t codePoint) {
  if (codePoint < 0x80) return {static_cast<char>(codePoint)};
  if (codePoint < 0x800) return {static_cast<char>(0xC0 | codePoint >> 6), static_cast<char>(0x80 | (codePoint & 63))};
  return {static_cast<char>(0xE0 | codePoint >> 12), static_cast<char>(0x80 | (codePoint >> 6 & 63)),
          static_cast<char>(0x80 | (codePoint & 63))};
}

/// What the text of a group is.
enum class Place { Body, Colors, Picture, Skipped };

struct Group {
  Place place = Place::Body;
  TextLook look;
  int bytesBehindUnicode = 1;
};

struct ControlWord {
  std::string_view name;
  bool hasNumber = false;
  std::int32_t number = 0;
};

class RtfReader {
 public:
  explicit RtfReader(std::string_view rtf) : rest_(rtf) {}

  std::optional<RichText> Read() {
    if (!rest_.starts_with("{\\rtf")) return std::nullopt;
    while (!rest_.empty() && !failed_) {
      const char c = TakeChar();
      if (c == '{') {
        Begin();
      } else if (c == '}') {
        if (!End()) break;
      } else if (c == '\\') {
        TakeControl();
      } else if (c != '\r' && c != '\n' && c != '\0') {
        TakeText(c);
      }
    }
    if (failed_) return std::nullopt;
    return std::move(text_);
  }

 private:
  char TakeChar() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  Group& Now() { return groups_.back(); }

  void Begin() {
    failed_ = groups_.size() >= kDeepest;
    if (!failed_) groups_.push_back(groups_.back());
  }

  // False at the end of the document.
  bool End() {
    const Group ended = groups_.back();
    groups_.pop_back();
    if (groups_.size() <= 1) return false;
    if (ended.place == Place::Picture && Now().place != Place::Picture) FinishPicture();
    return true;
  }

  void TakeControl() {
    if (rest_.empty()) return;
    if (IsLetter(rest_.front())) return TakeWord();
    const char symbol = TakeChar();
    if (symbol == '\'') {
      TakeHexByte();
    } else if (symbol == '*') {
      TakeOptional();
    } else if (symbol == '~') {
      TakeText('\xA0');
    } else if (symbol == '_') {
      TakeText('-');
    } else if (symbol == '\r' || symbol == '\n') {
      TakeText('\n');
    } else if (symbol == '\\' || symbol == '{' || symbol == '}') {
      TakeText(symbol);
    }
  }

  void TakeHexByte() {
    const int high = rest_.size() >= 2 ? HexValue(rest_[0]) : -1;
    const int low = high >= 0 ? HexValue(rest_[1]) : -1;
    if (low < 0) return;
    rest_.remove_prefix(2);
    TakeText(static_cast<char>(high * 16 + low));
  }

  // A group that a reader may pass over: only the pictures of other programs are of use.
  void TakeOptional() {
    if (!rest_.starts_with("\\shppict")) Now().place = Place::Skipped;
  }

  ControlWord TakeControlWord() {
    ControlWord word;
    std::size_t size = 0;
    while (size < rest_.size() && IsLetter(rest_[size])) ++size;
    word.name = rest_.substr(0, size);
    rest_.remove_prefix(size);
    std::size_t digits = rest_.starts_with('-') ? 1 : 0;
    const std::size_t sign = digits;
    while (digits < rest_.size() && IsDigit(rest_[digits])) ++digits;
    if (digits > sign) {
      word.hasNumber = true;
      word.number = ValLong(rest_.substr(0, std::min<std::size_t>(digits, 12)));
      rest_.remove_prefix(digits);
    }
    if (rest_.starts_with(' ')) rest_.remove_prefix(1);
    return word;
  }

  void TakeWord() {
    const ControlWord word = TakeControlWord();
    if (word.name == "bin") {
      rest_.remove_prefix(std::min<std::size_t>(std::max(word.number, 0), rest_.size()));
      return;
    }
    if (Now().place == Place::Skipped) return;
    if (TakePlace(word) || TakePictureWord(word) || TakeColorWord(word) || TakeLook(word)) return;
    if (word.name == "uc") Now().bytesBehindUnicode = std::clamp(word.number, 0, 100);
    if (word.name == "u") TakeUnicode(word.number);
    TakeCharacterWord(word.name);
  }

  bool TakePlace(const ControlWord& word) {
    constexpr std::array<std::string_view, 11> kSkipped = {"fonttbl", "stylesheet", "info",    "header",
                                                           "footer",  "headerl",    "headerr", "footerl",
                                                           "footerr", "nonshppict", "object"};
    if (std::find(kSkipped.begin(), kSkipped.end(), word.name) != kSkipped.end()) {
      Now().place = Place::Skipped;
    } else if (word.name == "colortbl") {
      Now().place = Place::Colors;
    } else if (word.name == "pict") {
      Now().place = Place::Picture;
      picture_ = RichPicture();
      nibble_ = -1;
    } else {
      return false;
    }
    return true;
  }

  bool TakePictureWord(const ControlWord& word) {
    if (Now().place != Place::Picture) return false;
    const std::int32_t pixels = std::clamp(word.number / kTwipsAPixel, 0, kLargestPicture);
    if (word.name == "picwgoal") picture_.width = pixels;
    if (word.name == "pichgoal") picture_.height = pixels;
    return true;
  }

  bool TakeColorWord(const ControlWord& word) {
    if (Now().place != Place::Colors) return false;
    const std::int32_t part = std::clamp(word.number, 0, 255);
    if (word.name == "red") color_ = (std::max(color_, 0) & 0x00FFFF) | part << 16;
    if (word.name == "green") color_ = (std::max(color_, 0) & 0xFF00FF) | part << 8;
    if (word.name == "blue") color_ = (std::max(color_, 0) & 0xFFFF00) | part;
    return true;
  }

  bool TakeLook(const ControlWord& word) {
    TextLook& look = Now().look;
    const bool on = !word.hasNumber || word.number != 0;
    if (word.name == "b") {
      look.bold = on;
    } else if (word.name == "i") {
      look.italic = on;
    } else if (word.name == "ul") {
      look.underline = on;
    } else if (word.name == "ulnone") {
      look.underline = false;
    } else if (word.name == "plain") {
      look = TextLook();
    } else if (word.name == "cf") {
      const auto row = static_cast<std::size_t>(std::max(word.number, 0));
      look.color = row < colors_.size() ? colors_[row] : -1;
    } else {
      return false;
    }
    return true;
  }

  void TakeCharacterWord(std::string_view name) {
    struct Row {
      std::string_view name;
      char character;
    };
    constexpr std::array<Row, 12> kRows = {{{"par", '\n'},
                                            {"line", '\n'},
                                            {"row", '\n'},
                                            {"tab", '\t'},
                                            {"cell", '\t'},
                                            {"emdash", '\x97'},
                                            {"endash", '\x96'},
                                            {"lquote", '\x91'},
                                            {"rquote", '\x92'},
                                            {"ldblquote", '\x93'},
                                            {"rdblquote", '\x94'},
                                            {"bullet", '\x95'}}};
    for (const Row& row : kRows) {
      if (row.name == name) TakeText(row.character);
    }
  }

  void TakeUnicode(std::int32_t number) {
    const std::uint32_t codePoint = static_cast<std::uint32_t>(number) & 0xFFFF;
    const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    for (const char c : isSurrogate ? std::string("?") : AnsiFromUtf8(Utf8Of(codePoint))) TakeText(c);
    for (int i = 0; i < Now().bytesBehindUnicode && !rest_.empty(); ++i) {
      if (rest_.starts_with("\\'") && rest_.size() >= 4) {
        rest_.remove_prefix(4);
      } else if (rest_[0] != '\\' && rest_[0] != '{' && rest_[0] != '}') {
        rest_.remove_prefix(1);
      }
    }
  }

  void TakeText(char c) {
    switch (Now().place) {
      case Place::Body:
        return AppendChar(c);
      case Place::Colors:
        if (c == ';') colors_.push_back(std::exchange(color_, -1));
        failed_ = failed_ || colors_.size() > kMostPieces;
        return;
      case Place::Picture:
        return TakeNibble(c);
      case Place::Skipped:
        return;
    }
  }

  void AppendChar(char c) {
    if (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') c = ' ';
    if (text_.empty() || text_.back().picture || text_.back().look != Now().look) {
      text_.push_back({"", Now().look, std::nullopt});
      failed_ = text_.size() > kMostPieces;
    }
    text_.back().text += c;
  }

  void TakeNibble(char c) {
    const int value = HexValue(c);
    if (value < 0) return;
    if (nibble_ < 0) {
      nibble_ = value;
      return;
    }
    picture_.bytes += static_cast<char>(nibble_ * 16 + value);
    nibble_ = -1;
  }

  void FinishPicture() {
    if (!picture_.bytes.empty() && Now().place == Place::Body) {
      text_.push_back({"", {}, std::move(picture_)});
      failed_ = ++pictures_ > kMostPictures;
    }
    picture_ = RichPicture();
  }

  std::string_view rest_;
  bool failed_ = false;
  std::vector<Group> groups_ = std::vector<Group>(1);
  std::vector<std::int32_t> colors_;
  std::int32_t color_ = -1;
  RichPicture picture_;
  int nibble_ = -1;
  std::size_t pictures_ = 0;
  RichText text_;
};

}  // namespace

std::optional<RichText> ReadRtf(std::string_view rtf) {
  return RtfReader(rtf).Read();
}

}  // namespace tarvolt
