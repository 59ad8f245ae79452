// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/notes_block.h"

#include <algorithm>
#include <utility>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::string_view kOpen = "*[[*";
constexpr std::string_view kClose = "*]]*";
constexpr char kItemEnd = '\xFF';
constexpr char kFieldEnd = '\xFE';
constexpr char kNameEnd = '\xC8';

constexpr std::string_view kUsingUT = "Logged Using UT";
constexpr std::string_view kLmst = "Logged In LMST";
constexpr std::string_view kNoTimeStamps = "No Time Stamps";
constexpr std::string_view kTimeRefZero = "Time Ref Zero";
constexpr std::string_view kIntegerSave = "Integer Save";
constexpr std::string_view kXLabel = "XALABEL";
constexpr std::string_view kYLabel = "YALABEL";
constexpr std::string_view kLabel = "CHL";
constexpr std::string_view kOffset = "CHO";
constexpr std::string_view kMetaData = "MetaData_";
constexpr std::string_view kNotation = "LBL^|^";

bool Holds(std::string_view item, std::string_view token) {
  return item.find(token) != std::string_view::npos;
}

// Takes the piece up to `end` off the front of `rest`; the whole of it when there is no `end`.
std::string_view TakePiece(std::string_view& rest, char end) {
  const std::size_t at = rest.find(end);
  const std::string_view piece = rest.substr(0, at);
  rest = at == std::string_view::npos ? std::string_view() : rest.substr(at + 1);
  return piece;
}

// Items "CHL" and "CHO": a digit, then the text. A character that is no digit counts as 0.
void ReadChannelText(std::string_view item, std::array<std::string, 9>& texts) {
  const char digit = item[3];
  const int channel = digit >= '0' && digit <= '9' ? digit - '0' : 0;
  if (channel > 8) return;
  texts[channel] = item.substr(4);
}

void ReadMetadata(std::string_view item, Metadata& metadata) {
  const std::string text = Trim(item.substr(kMetaData.size()));
  const std::size_t nameEnd = text.find(kNameEnd);
  if (text.size() <= 1 || nameEnd == std::string::npos || nameEnd == 0) return;
  MetadataRecord record;
  record.name = text.substr(0, nameEnd);
  record.value = text.substr(nameEnd + 1);
  metadata.Append(std::move(record));
}

// Writes field by field into the next slot, as far as the fields are good; only a whole notation counts.
void ReadNotation(std::string_view item, Notations& notations) {
  std::string_view rest = item.substr(item.find(kNotation) + kNotation.size());
  const std::string_view channelText = TakePiece(rest, kFieldEnd);
  const std::string_view indexText = TakePiece(rest, kFieldEnd);
  const std::string_view text = TakePiece(rest, kFieldEnd);
  if (channelText.empty() || indexText.empty() || text.empty()) return;

  Notation& slot = notations.slots[notations.count];
  const std::int32_t channel = ValLong(channelText);
  const bool channelGood = channel >= 0 && channel <= 9;
  slot.channel = static_cast<std::int16_t>(channelGood ? channel : 0);
  if (!channelGood) return;
  const std::int32_t index = ValLong(indexText);
  slot.index = std::max(index, 0);
  if (index < 0) return;
  slot.text = text;
  // Stays on slot 100, which the following ones overwrite (meant).
  if (notations.count < Notations::kSlots - 1) ++notations.count;
}

// The order of these tests decides, and they look anywhere in the item (meant): a metadata name that holds "CHL" is
// taken for a label. A label of fewer than three characters is not read back although it is written (meant too).
void ReadItem(std::string_view item, NotesBlock& notes) {
  if (Holds(item, kUsingUT)) {
    notes.usingUT = true;
  } else if (Holds(item, kNoTimeStamps)) {
    notes.noTimeStamps = true;
  } else if (Holds(item, kLmst)) {
    notes.lmst = true;
  } else if (Holds(item, kTimeRefZero)) {
    notes.timeRefZero = true;
  } else if (Holds(item, kXLabel)) {
    notes.xAxisLabel = item.substr(kXLabel.size());
  } else if (Holds(item, kYLabel)) {
    notes.yAxisLabel = item.substr(kYLabel.size());
  } else if (Holds(item, kLabel) && item.size() > 6) {
    ReadChannelText(item, notes.labels);
  } else if (Holds(item, kOffset) && item.size() > 4) {
    ReadChannelText(item, notes.offsets);
  } else if (Holds(item, kIntegerSave)) {
    notes.integers = true;
  } else if (Holds(item, kMetaData)) {
    ReadMetadata(item, notes.metadata);
  } else if (Holds(item, kNotation) && item.size() >= 12) {
    ReadNotation(item, notes.notations);
  }
}

void AddItem(std::string& block, std::string_view token, std::string_view text = {}) {
  block += token;
  block += text;
  block += kItemEnd;
}

void AddFlag(std::string& block, bool wanted, std::string_view token) {
  if (wanted) AddItem(block, token);
}

void AddChannelTexts(std::string& block, std::string_view token, const std::array<std::string, 9>& texts,
                     int channels) {
  for (int i = 0; i < channels; ++i) AddItem(block, token, static_cast<char>('0' + i) + texts[i]);
}

void AddMetadata(std::string& block, const Metadata& metadata) {
  for (const MetadataRecord& record : metadata.Records()) {
    if (record.name.empty()) break;
    AddItem(block, kMetaData, record.name + kNameEnd + record.value);
  }
}

void AddNotations(std::string& block, const Notations& notations) {
  constexpr int kFull = Notations::kSlots - 1;
  const int used = notations.count < kFull ? notations.count : Notations::kSlots;
  for (int i = 0; i < used; ++i) {
    const Notation& slot = notations.slots[i];
    if (slot.text.empty() || slot.text == kDeletedNotation) continue;
    AddItem(block, kNotation,
            NumberText(std::int64_t{slot.channel}) + kFieldEnd + NumberText(std::int64_t{slot.index}) + kFieldEnd +
                slot.text + kFieldEnd);
  }
}

}  // namespace

NotesBlock ParseNotes(std::string_view raw) {
  NotesBlock notes;
  const std::size_t open = raw.find(kOpen);
  const std::size_t close = raw.find(kClose);
  if (open == std::string_view::npos || close == std::string_view::npos || open > close) {
    notes.freeText = raw;
    return notes;
  }
  // With the mark at the very start all free text is dropped, also what stands behind the block (meant).
  if (open > 0) {
    notes.freeText = raw.substr(0, open);
    notes.freeText += raw.substr(close + kClose.size());
  }
  const std::size_t begin = open + kOpen.size();
  std::string_view block = close > begin ? raw.substr(begin, close - begin) : std::string_view();
  while (!block.empty()) {
    const std::string_view item = TakePiece(block, kItemEnd);
    if (item.empty()) break;
    ReadItem(item, notes);
  }
  return notes;
}

std::string WithoutFraming(std::string_view text) {
  const std::size_t open = text.find(kOpen);
  const std::size_t close = text.find(kClose);
  const bool framed =
      open != std::string_view::npos && close != std::string_view::npos && close > open && close - open > 4;
  if (!framed) return std::string(text);
  return std::string(text.substr(0, open)).append(text.substr(close + kClose.size()));
}

std::string BuildNotes(const NotesBlock& notes, int channels) {
  std::string block = WithoutFraming(notes.freeText);
  block += kOpen;
  AddFlag(block, notes.usingUT, kUsingUT);
  AddFlag(block, notes.lmst, kLmst);
  AddFlag(block, notes.noTimeStamps, kNoTimeStamps);
  AddFlag(block, notes.timeRefZero, kTimeRefZero);
  AddChannelTexts(block, kLabel, notes.labels, channels);
  AddChannelTexts(block, kOffset, notes.offsets, channels);
  AddFlag(block, notes.integers, kIntegerSave);
  if (!Trim(notes.xAxisLabel).empty()) AddItem(block, kXLabel, notes.xAxisLabel);
  if (!Trim(notes.yAxisLabel).empty()) AddItem(block, kYLabel, notes.yAxisLabel);
  AddMetadata(block, notes.metadata);
  AddNotations(block, notes.notations);
  block += kClose;
  return block;
}

}  // namespace tarvolt
