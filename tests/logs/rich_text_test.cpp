// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/rich_text.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

RichPiece Piece(const std::string& text, const TextLook& look = {}) {
  return {text, look, std::nullopt};
}

std::string TextOf(const std::string& rtf) {
  const auto read = ReadRtf(rtf);
  if (!read) return "(refused)";
  std::string text;
  for (const RichPiece& piece : *read) text += piece.picture ? "[" + piece.picture->bytes + "]" : piece.text;
  return text;
}

TEST(RichText, ComesBackFromRtfAsItWas) {
  TextLook warning;
  warning.bold = true;
  warning.italic = true;
  warning.color = 0xC00010;
  TextLook second;
  second.underline = true;
  second.color = 0x0000FF;
  const RichText text = {Piece("10\xB5V {a\\b}\n\ttab\n"),
                         Piece("Burst \x80", warning),
                         Piece(" at \n", second),
                         {"", {}, RichPicture{std::string("\x89PNG\0\r\n\xFF", 8), 640, 480}},
                         Piece("end")};
  const std::string rtf = WriteRtf(text);
  for (const char c : rtf) EXPECT_LT(static_cast<unsigned char>(c), 0x80);
  const auto read = ReadRtf(rtf);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->size(), text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    EXPECT_EQ((*read)[i].text, text[i].text);
    EXPECT_EQ((*read)[i].look, text[i].look) << i;
  }
  ASSERT_TRUE((*read)[3].picture);
  EXPECT_EQ((*read)[3].picture->bytes, text[3].picture->bytes);
  EXPECT_EQ((*read)[3].picture->width, 640);
  EXPECT_EQ((*read)[3].picture->height, 480);
}

TEST(RichText, ReadsWhatWordProcessorsWrite) {
  EXPECT_EQ(TextOf("{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\*\\generator Word;}{\\info{\\title T}}a\\par\r\nb}"), "a\nb");
  EXPECT_EQ(TextOf("{\\rtf1\\uc1 \\u181?V \\u9728\\'3f \\ldblquote x\\rdblquote}"), "\xB5V ? \x93x\x94");
  EXPECT_EQ(TextOf("{\\rtf1{\\*\\shppict{\\pict\\pngblip 4142}}{\\nonshppict{\\pict 43}}}"), "[AB]");
  EXPECT_EQ(TextOf("{\\rtf1{\\b bold\\b0 plain}\\i1 x}"), "boldplainx");
  EXPECT_EQ(TextOf("{\\rtf1 a{\\pict\\bin3 }}}}b}"), "ab") << "raw bytes may be braces";
}

TEST(RichText, RefusesOrSurvivesWhatIsNoDocument) {
  EXPECT_EQ(TextOf(""), "(refused)");
  EXPECT_EQ(TextOf("plain text"), "(refused)");
  EXPECT_EQ(TextOf("{\\rtf1" + std::string(100000, '{')), "(refused)");
  std::string pieces = "{\\rtf1";
  for (int i = 0; i < 120000; ++i) pieces += "{\\b a}b";
  EXPECT_EQ(TextOf(pieces), "(refused)");
  EXPECT_EQ(TextOf("{\\rtf1 cut off {\\b in"), "cut off in");
  EXPECT_EQ(TextOf("{\\rtf1 a}} b"), "a");
  EXPECT_EQ(TextOf("{\\rtf1 a\\bin99999999999 b"), "a");
  EXPECT_EQ(TextOf("{\\rtf1\\cf99999 a\\uc-5\\u-1\\'zz\\"), "a?zz");
  EXPECT_EQ(TextOf("{\\rtf1 a{\\pict 4"), "a");
}

}  // namespace
}  // namespace tarvolt
