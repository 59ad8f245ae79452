#include "files/header_info.h"

#include <algorithm>

#include "files/backup_source.h"
#include "files/notes_block.h"
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

void getBlankHeaderInfo(ChartWindow& window) {
  window.notes = "no available info";
  DataFileHeader& header = window.header;
  header = DataFileHeader{};
  header.version = "0000000000";
  header.source = PadTo("unknown", 10);
  header.author = PadTo("unknown", 20);
  header.localName = PadTo("unknown", 20);
  header.location = PadTo("unknown", 40);
  header.notesLength = static_cast<std::int32_t>(window.notes.size());
}

void getStaticHeaderInfo(const Session& session, ChartWindow& window, std::size_t notesLength) {
  const Settings& settings = session.settings;
  DataFileHeader& header = window.header;
  header.channels = static_cast<std::int16_t>(window.run.ChannelCount);
  header.timeZone = RoundToInt16(settings.TZ);
  header.latitude = settings.UserLat;
  header.longitude = settings.UserLng;
  header.author = PadTo(settings.Author, 20);
  header.localName = PadTo(settings.LocalName, 20);
  header.location = PadTo(settings.QTH, 40);
  header.notesLength = static_cast<std::int32_t>(notesLength);
}

void GetWriterInfo(const Session& session, const StripChart& chart, DataFileHeader& header) {
  header.version = VersionField(session.store.GetSetting(Section::Settings, "Version"));
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

std::string GetModifiedNotes(const Session& session, const ChartWindow& window, const std::string& freeText) {
  return GetModifiedNotes(window, freeText, LayoutOfSettings(session.settings, window.chart.ChannelCount()));
}

std::string GetModifiedNotes(const ChartWindow& window, const std::string& freeText, const SampleLayout& layout) {
  NotesOptions options;
  options.usingUT = window.run.ChartIsUT;
  options.lmst = window.run.ChartIsLMST;
  options.noTimeStamps = !layout.timeStamps;
  options.timeRefZero = window.run.TimeRefZeroFile;
  options.integers = layout.integers;
  options.onlyView = window.save.ViewSaveActive;
  options.first = window.run.StoreStart + window.save.FirstViewIndex;
  options.last = window.run.StoreStart + window.save.LastSaveIndex;
  return BuildNotes(window, freeText, options);
}

}  // namespace tarvolt
