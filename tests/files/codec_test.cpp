// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "files/format/header_codec.h"
#include "files/format/sample_layout.h"
#include "files/raw_file.h"

namespace tarvolt {
namespace {

TEST(HeaderCodec, FieldsLieBackToBackInLittleEndian) {
  DataFileHeader header;
  header.version = "0102030000";
  header.start = 40180.5;
  header.end = 40181.25;
  header.latitude = 50.5;
  header.longitude = 7.25;
  header.yMax = 900;
  header.yMin = -10;
  header.timeZone = 2;
  header.author = "A. Observer";                      // shorter than its field
  header.localName = "Home Station        too long";  // longer than it
  header.location = "Somewhere quiet";
  header.channels = 3;
  header.notesLength = 4;
  const HeaderBytes bytes = EncodeHeader(header);
  const RawFile expected = RawFile().Front(40180.5, 40181.25, 3, "note");
  EXPECT_EQ(std::string(bytes.data(), bytes.size()), expected.Bytes().substr(0, 156));

  const DataFileHeader read = DecodeHeader(expected.Bytes());
  EXPECT_EQ(read.version, "0102030000");
  EXPECT_EQ(read.end, 40181.25);
  EXPECT_EQ(read.longitude, 7.25);
  EXPECT_EQ(read.yMin, -10);
  EXPECT_EQ(read.timeZone, 2);
  EXPECT_EQ(read.author, "A. Observer         ");
  EXPECT_EQ(read.location, "Somewhere quiet                         ");
  EXPECT_EQ(read.channels, 3);
  EXPECT_EQ(read.notesLength, 4);
}

TEST(SampleLayout, LastIndexFollowsTheLengthInEachLayout) {
  const std::uint64_t front = 156 + 10;
  struct Case {
    SampleLayout layout;
    std::uint64_t sampleBytes;
    std::int32_t last;
  };
  const Case cases[] = {
      {{2, true, false}, 24 * 5, 4},       {{2, true, false}, 24 * 5 + 23, 4},  // a torn last sample does not count
      {{2, true, true}, 12 * 5, 4},        {{2, false, true}, 4 * 5 + 3, 4},
      {{2, false, false}, 16 * 5, 5},  // one too many, as all readers have it
      {{9, false, false}, 72 * 5 + 71, 5}, {{1, true, false}, 0, -1},
      {{1, false, false}, 0, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(LastIndexOfFile(c.layout, front + c.sampleBytes, 10), c.last) << c.sampleBytes;
  }
  EXPECT_EQ(LastIndexOfFile({1, true, false}, 100, 10), -1);
  EXPECT_EQ(LastIndexOfFile({1, false, true}, std::uint64_t{1} << 40, 0), std::numeric_limits<std::int32_t>::max() - 1);
}

TEST(SampleLayout, IntegersAreRoundedToEvenAndHeldInTheirRange) {
  SampleColumns columns(2);
  for (const double value : {0.5, 1.5, 2.5, 1e6, std::numeric_limits<double>::quiet_NaN(), -32768.4}) {
    const std::int32_t index = columns.Count();
    columns.Append(40000 + index);
    columns.SetValue(0, index, value);
    columns.SetValue(1, index, -value);
  }
  const SampleLayout layout{2, true, true};
  std::string bytes(6 * layout.BytesPerSample(), '?');
  EncodeSamples(columns, layout, 0, 6, bytes.data());
  const int expected[][2] = {{0, 0}, {2, -2}, {2, -2}, {32767, -32768}, {0, 0}, {-32768, 32767}};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(NumberAt<double>(bytes, i * 12), 40000 + i);
    EXPECT_EQ(NumberAt<std::int16_t>(bytes, i * 12 + 8), expected[i][0]) << i;
    EXPECT_EQ(NumberAt<std::int16_t>(bytes, i * 12 + 10), expected[i][1]) << i;
  }
}

// Columns lie in blocks and are encoded in pieces: a stretch that begins and ends inside both, one value unwritten and
// one channel that the columns lack.
TEST(SampleLayout, EncodesAcrossTheBlocksOfTheColumns) {
  constexpr std::int32_t kCount = BlockColumn::kBlock + 1000;
  constexpr std::int32_t kFirst = BlockColumn::kBlock - 777;
  constexpr std::int32_t kUnwritten = BlockColumn::kBlock;
  SampleColumns columns(1);
  for (std::int32_t i = 0; i < kCount; ++i) {
    columns.Append(40000 + i);
    if (i != kUnwritten) columns.SetValue(0, i, i);
  }
  const SampleLayout layout{2, true, false};
  std::string bytes((kCount - 1 - kFirst) * layout.BytesPerSample(), '?');
  EncodeSamples(columns, layout, kFirst, kCount - 1 - kFirst, bytes.data());
  RawFile expected;
  for (std::int32_t i = kFirst; i < kCount - 1; ++i) expected.Add(40000.0 + i).Add(i == kUnwritten ? 0.0 : i).Add(0.0);
  EXPECT_TRUE(bytes == expected.Bytes());
}

}  // namespace
}  // namespace tarvolt
