// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/metadata.h"

#include <gtest/gtest.h>

#include "text/number.h"

namespace tarvolt {
namespace {

TEST(Metadata, ANameInAnotherCaseReplacesItsRecord) {
  Metadata metadata;
  EXPECT_EQ(metadata.AddToMetaData("Antenna", "dish", "site book", "none"), "");
  EXPECT_EQ(metadata.AddToMetaData("Email", "a@b"), "");
  EXPECT_EQ(metadata.AddToMetaData(" ANTENNA ", "yagi"), "");
  ASSERT_EQ(metadata.Records().size(), 2u);
  const MetadataRecord& antenna = metadata.Records()[0];
  EXPECT_EQ(antenna.name, " ANTENNA ");
  EXPECT_EQ(antenna.value, "yagi");
  EXPECT_EQ(antenna.source, "site book") << "kept, for none was given";
  EXPECT_EQ(antenna.defaultText, "none");
  metadata.AddToMetaData("antenna", "", "label", "dish");
  EXPECT_EQ(metadata.Records()[0].value, "");
  EXPECT_EQ(metadata.Records()[0].source, "label");
  EXPECT_EQ(metadata.Records()[0].defaultText, "dish");
}

TEST(Metadata, AFullTableRefusesNewNamesAndStillTakesOldOnes) {
  Metadata metadata;
  for (std::size_t i = 0; i < Metadata::kMaxRecords; ++i) {
    ASSERT_TRUE(metadata.Append({NumberText(static_cast<std::int64_t>(i)), "value", "", ""}));
  }
  EXPECT_EQ(metadata.AddToMetaData("one more", "x"), "Could not add one more to metadata. Array Full.");
  EXPECT_FALSE(metadata.Append({"one more", "x", "", ""}));
  EXPECT_EQ(metadata.AddToMetaData("7", "new"), "");
  EXPECT_EQ(metadata.Records()[7].value, "new");
  metadata.DeleteMetaData();
  EXPECT_TRUE(metadata.Records().empty());
  EXPECT_EQ(metadata.AddToMetaData("one more", "x"), "");
}

TEST(Metadata, ARecordWithoutANameIsNone) {
  Metadata metadata;
  metadata.AddToMetaData("  ", "value");
  EXPECT_TRUE(metadata.Records().empty());
}

}  // namespace
}  // namespace tarvolt
