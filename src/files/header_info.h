// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "files/format/sample_layout.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The header when a session is reset; clears the notes, the labels and the notations too.
void ClearHeader(ChartWindow& window);

/// Copies channels, zone, position, author, local name and location from the settings, and the length of `notesBlock`.
void getStaticHeaderInfo(const Session& session, ChartWindow& window, std::size_t notesLength);

/// The header of the live chart: version, start and end from its samples, the y axis, then the static part.
void GetHeader(const Session& session, ChartWindow& window, std::size_t notesLength);

/// The part of a header that the writer gives to every file: its version, and the y axis as it stands now.
void GetWriterInfo(const Session& session, const StripChart& chart, DataFileHeader& header);
void GetWriterInfo(std::string_view version, const StripChart& chart, DataFileHeader& header);

/// The header of the chart on display: that of a loaded file, else what a file would say of the run so far.
DataFileHeader HeaderOnDisplay(const Session& session, const ChartWindow& window);

/// "01.02.03" of a header's version.
std::string VersionText(const DataFileHeader& header);

/// The free-text notes with the framing and all items of this chart behind them, as the settings have samples written
/// now.
std::string GetModifiedNotes(const Session& session, const ChartWindow& window, const std::string& freeText);

/// The same for samples of that layout.
std::string GetModifiedNotes(const ChartWindow& window, const std::string& freeText, const SampleLayout& layout);

}  // namespace tarvolt
