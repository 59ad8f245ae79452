// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolt {

/// How a stretch of text looks.
struct TextLook {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  std::int32_t color = -1;  ///< 0xRRGGBB, -1 for the reader's own

  bool operator==(const TextLook&) const = default;
};

/// A picture as the bytes of a PNG or JPEG file, with the size in pixels at which it is shown (0 for its own).
struct RichPicture {
  std::string bytes;
  std::int32_t width = 0;
  std::int32_t height = 0;
};

/// A stretch of one look, or a picture. Lines end in "\n".
struct RichPiece {
  std::string text;
  TextLook look;
  std::optional<RichPicture> picture;
};

using RichText = std::vector<RichPiece>;

/// What a document may hold: more comes from no observer, and would only keep the reader busy.
inline constexpr std::size_t kMostPieces = 100000;
inline constexpr std::size_t kMostPictures = 500;

/// The document as RTF, which word processors read as well. Pictures are taken as PNG.
std::string WriteRtf(const RichText& text);

/// The document of an RTF file. What this program does not write (tables, fonts, fields) is read as plain text or
/// passed over. Nothing for what is no RTF, is nested too deep or has too many pieces.
std::optional<RichText> ReadRtf(std::string_view rtf);

}  // namespace tarvolt
