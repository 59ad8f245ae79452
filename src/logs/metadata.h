// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvolt {

/// One record of the metadata of a chart; the file keeps name and value.
struct MetadataRecord {
  std::string name;
  std::string value;
  std::string source;
  std::string defaultText;
};

/// The records of one chart, at most kMaxRecords, in order of their making.
class Metadata {
 public:
  static constexpr std::size_t kMaxRecords = 2001;

  /// Names compare upper-cased and trimmed: a record of the same name is overwritten, its source and default only by
  /// texts that are not empty, else the record is added. A record without a name is none and is left out.
  /// Returns an empty text, or "Could not add <name> to metadata. Array Full.".
  std::string AddToMetaData(std::string_view name, std::string_view value, std::string_view source = {},
                            std::string_view defaultText = {});

  /// Adds without looking for the same name, as a file's reader does. False when the table is full.
  bool Append(MetadataRecord record);

  /// Removes all records.
  void DeleteMetaData();

  const std::vector<MetadataRecord>& Records() const { return records_; }

 private:
  std::vector<MetadataRecord> records_;
};

}  // namespace tarvolt
