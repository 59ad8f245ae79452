// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "logs/rich_text.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

void AppendHex(unsigned char byte, std::string& rtf) {
  rtf += kHexDigits[byte >> 4];
  rtf += kHexDigits[byte & 15];
}

std::string Whole(std::int64_t value) {
  return NumberText(value);
}

class RtfWriter {
 public:
  std::string Write(const RichText& text) {
    CollectColors(text);
    rtf_ = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\r\n";
    WriteColors();
    rtf_ += "\\f0\\fs20 ";
    for (const RichPiece& piece : text) {
      if (piece.picture) {
        WritePicture(*piece.picture);
      } else {
        WritePiece(piece);
      }
    }
    return rtf_ + "}\r\n";
  }

 private:
  void CollectColors(const RichText& text) {
    for (const RichPiece& piece : text) {
      const std::int32_t color = piece.look.color;
      if (color >= 0 && std::find(colors_.begin(), colors_.end(), color) == colors_.end()) colors_.push_back(color);
    }
  }

  void WriteColors() {
    rtf_ += "{\\colortbl ;";
    for (const std::int32_t color : colors_) {
      rtf_ += "\\red" + Whole(color >> 16 & 255) + "\\green" + Whole(color >> 8 & 255) + "\\blue" + Whole(color & 255) +
              ";";
    }
    rtf_ += "}\r\n";
  }

  void WritePiece(const RichPiece& piece) {
    const TextLook& look = piece.look;
    if (look == TextLook()) return WriteText(piece.text);
    rtf_ += '{';
    if (look.bold) rtf_ += "\\b";
    if (look.italic) rtf_ += "\\i";
    if (look.underline) rtf_ += "\\ul";
    if (look.color >= 0) {
      // The first row of the table is the reader's own colour.
      const auto row = std::find(colors_.begin(), colors_.end(), look.color) - colors_.begin() + 1;
      rtf_ += "\\cf" + Whole(row);
    }
    rtf_ += ' ';
    WriteText(piece.text);
    rtf_ += '}';
  }

  void WriteText(std::string_view text) {
    for (const char c : text) {
      if (c == '\n') {
        rtf_ += "\\par\r\n";
      } else if (c == '\t') {
        rtf_ += "\\tab ";
      } else if (c == '\\' || c == '{' || c == '}') {
        rtf_ += '\\';
        rtf_ += c;
      } else if (static_cast<unsigned char>(c) >= 0x80) {
        rtf_ += "\\'";
        AppendHex(static_cast<unsigned char>(c), rtf_);
      } else {
        rtf_ += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
      }
    }
  }

  void WritePicture(const RichPicture& picture) {
    constexpr int kTwipsAPixel = 15;
    constexpr std::size_t kBytesALine = 64;
    rtf_ += "{\\pict\\pngblip";
    if (picture.width > 0 && picture.height > 0) {
      rtf_ += "\\picw" + Whole(picture.width) + "\\pich" + Whole(picture.height);
      rtf_ += "\\picwgoal" + Whole(std::int64_t{picture.width} * kTwipsAPixel);
      rtf_ += "\\pichgoal" + Whole(std::int64_t{picture.height} * kTwipsAPixel);
    }
    for (std::size_t i = 0; i < picture.bytes.size(); ++i) {
      if (i % kBytesALine == 0) rtf_ += "\r\n";
      AppendHex(static_cast<unsigned char>(picture.bytes[i]), rtf_);
    }
    rtf_ += "}\r\n";
  }

  std::vector<std::int32_t> colors_;
  std::string rtf_;
};

}  // namespace

std::string WriteRtf(const RichText& text) {
  return RtfWriter().Write(text);
}

}  // namespace tarvolt
