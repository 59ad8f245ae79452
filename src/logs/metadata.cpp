// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/metadata.h"

#include <algorithm>
#include <utility>

#include "text/ansi.h"

namespace tarvolt {
namespace {

std::string NameForComparing(std::string_view name) {
  return Upper(Trim(name));
}

}  // namespace

std::string Metadata::AddToMetaData(std::string_view name, std::string_view value, std::string_view source,
                                    std::string_view defaultText) {
  const std::string sought = NameForComparing(name);
  if (sought.empty()) return {};
  const auto found = std::find_if(records_.begin(), records_.end(), [&](const MetadataRecord& record) {
    return NameForComparing(record.name) == sought;
  });
  if (found == records_.end()) {
    const bool added = Append({std::string(name), std::string(value), std::string(source), std::string(defaultText)});
    return added ? std::string() : "Could not add " + std::string(name) + " to metadata. Array Full.";
  }
  found->name = name;
  found->value = value;
  if (!source.empty()) found->source = source;
  if (!defaultText.empty()) found->defaultText = defaultText;
  return {};
}

bool Metadata::Append(MetadataRecord record) {
  if (records_.size() >= kMaxRecords) return false;
  records_.push_back(std::move(record));
  return true;
}

void Metadata::DeleteMetaData() {
  records_.clear();
}

}  // namespace tarvolt
