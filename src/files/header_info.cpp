// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/header_info.h"

#include <algorithm>

#include "files/backup_source.h"
#include "files/format/notes_block.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// "1.2.3" as the header has it: two digits each of major, minor and revision, then "0000".
std::string VersionField(std::string_view version) {
  std::string field;
  for (int part = 0; part < 3; ++part) {
    const std::size_t dot = version.find('.');
    field += FormatNumber(std::clamp(Val(version.substr(0, dot)), 0.0, 99.0), "00");
    version = dot == std::string_view::npos ? std::string_view() : version.substr(dot + 1);
  }
  return field + "0000";
}

}  // namespace

void ClearHeader(ChartWindow& window) {
  window.header = DataFileHeader{};
  window.notes.clear();
  window.notations = Notations{};
  window.channelLabels.fill({});
}

void getStaticHeaderInfo(const Session& session, ChartWindow& window, std::size_t notesLength) {
  const Settings& settings = session.settings;
  DataFileHeader& header = window.header;
  header.channels = static_cast<std::int16_t>(window.run.ChannelCount);
  header.timeZone = RoundToInt16(settings.place.TZ);
  header.latitude = settings.place.UserLat;
  header.longitude = settings.place.UserLng;
  header.author = PadTo(settings.station.Author, 20);
  header.localName = PadTo(settings.station.LocalName, 20);
  header.location = PadTo(settings.station.QTH, 40);
  header.notesLength = static_cast<std::int32_t>(notesLength);
}

void GetWriterInfo(const Session& session, const StripChart& chart, DataFileHeader& header) {
  GetWriterInfo(session.store.GetSetting(Section::Settings, "Version"), chart, header);
}

void GetWriterInfo(std::string_view version, const StripChart& chart, DataFileHeader& header) {
  header.version = VersionField(version);
  header.yMax = chart.YAxisMax;
  header.yMin = chart.YAxisMin;
}

void GetHeader(const Session& session, ChartWindow& window, std::size_t notesLength) {
  const StripChart& chart = window.chart;
  GetWriterInfo(session, chart, window.header);
  if (chart.Count() > 0) {
    window.header.start = chart.GetTime(0);
    window.header.end = chart.GetTime(window.LastSampleIndex());
  }
  getStaticHeaderInfo(session, window, notesLength);
}

DataFileHeader HeaderOnDisplay(const Session& session, const ChartWindow& window) {
  DataFileHeader header = window.header;
  if (window.save.keeping.LoadedFromFile) return header;
  GetWriterInfo(session, window.chart, header);
  if (window.save.keeping.BackupAlone()) {
    header.start = StartOfRun(window.run);
    header.end = window.run.EndStamp;
  } else if (window.chart.Count() > 0) {
    header.start = window.chart.GetTime(0);
    header.end = window.chart.GetTime(window.LastSampleIndex());
  }
  return header;
}

std::string VersionText(const DataFileHeader& header) {
  const std::string field = PadTo(header.version, 6);
  return field.substr(0, 2) + '.' + field.substr(2, 2) + '.' + field.substr(4, 2);
}

std::string GetModifiedNotes(const Session& session, const ChartWindow& window, const std::string& freeText) {
  return GetModifiedNotes(window, freeText, LayoutOfChart(session.settings, window));
}

std::string GetModifiedNotes(const ChartWindow& window, const std::string& freeText, const SampleLayout& layout) {
  NotesBlock notes;
  notes.freeText = freeText;
  notes.usingUT = window.run.ChartIsUT;
  notes.lmst = window.run.ChartIsLMST;
  notes.noTimeStamps = !layout.timeStamps;
  notes.timeRefZero = window.run.TimeRefZeroFile;
  notes.integers = layout.integers;
  notes.labels = window.channelLabels;
  for (std::size_t i = 0; i < notes.offsets.size(); ++i) notes.offsets[i] = NumberText(window.run.ChannelOffset[i]);
  notes.xAxisLabel = window.chart.XAxisLabel;
  notes.yAxisLabel = window.chart.YAxisLabel;
  notes.metadata = window.metadata;
  notes.notations = window.notations;
  if (window.save.ViewSaveActive) {
    notes.notations = window.notations.Within(window.run.StoreStart + window.save.FirstViewIndex,
                                              window.run.StoreStart + window.save.LastSaveIndex);
  }
  return BuildNotes(notes, window.chart.ChannelCount());
}

}  // namespace tarvolt
