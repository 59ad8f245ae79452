// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands.h"
#include "files/header_info.h"
#include "json.h"
#include "output.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

std::string Count(std::int64_t count) {
  return NumberText(count);
}

std::string TimeBaseText(const NotesBlock& notes) {
  std::string text = notes.lmst ? "LMST" : notes.usingUT ? "UT" : "local";
  return notes.timeRefZero ? text + ", counted from the midnight of the start" : text;
}

void Line(Output& output, const std::string& what, const std::string& text) {
  output.Put(PadTo(what + ":", 16) + text + '\n');
}

void AnsiLine(Output& output, const std::string& what, const std::string& text) {
  Line(output, what, Utf8FromAnsi(Trim(text)));
}

void PutHeader(Output& output, const DataFileReader& reader) {
  const DataFileHeader& header = reader.Header();
  AnsiLine(output, "Version", VersionText(header));
  Line(output, "Start", DateText(header.start) + "  (" + Exact(header.start) + ")");
  Line(output, "End", DateText(header.end) + "  (" + Exact(header.end) + ")");
  Line(output, "Time base", TimeBaseText(reader.Notes()));
  Line(output, "Time zone", Count(header.timeZone));
  Line(output, "Latitude", Exact(header.latitude) + " north");
  Line(output, "Longitude", Exact(header.longitude) + " west");
  Line(output, "Y axis", Exact(header.yMin) + " to " + Exact(header.yMax));
  AnsiLine(output, "Source", header.source);
  AnsiLine(output, "Author", header.author);
  AnsiLine(output, "Local name", header.localName);
  AnsiLine(output, "Location", header.location);
}

void PutLayout(Output& output, const DataFileReader& reader) {
  const SampleLayout& layout = reader.Layout();
  Line(output, "Samples", Count(reader.WholeCount()));
  Line(output, "Channels", Count(layout.channels));
  Line(output, "Values", layout.integers ? "16-bit integers" : "doubles");
  Line(output, "Time stamps", layout.timeStamps ? "yes" : "no");
  if (reader.EndsWithinSample()) Line(output, "Torn", "the file ends within a sample");
}

void PutItems(Output& output, const DataFileReader& reader) {
  const NotesBlock& notes = reader.Notes();
  for (int i = 0; i < reader.Layout().channels; ++i) {
    const std::string offset = notes.offsets[i].empty() ? "" : "  offset " + notes.offsets[i];
    Line(output, "Channel " + Count(i + 1), Utf8FromAnsi(notes.labels[i] + offset));
  }
  if (!notes.xAxisLabel.empty()) AnsiLine(output, "X axis title", notes.xAxisLabel);
  if (!notes.yAxisLabel.empty()) AnsiLine(output, "Y axis title", notes.yAxisLabel);
  for (const MetadataRecord& record : notes.metadata.Records())
    Line(output, "Metadata", Utf8FromAnsi(record.name + " = " + record.value));
  for (const Notation& notation : notes.notations.slots) {
    if (notation.text.empty()) continue;
    Line(output, "Notation",
         "sample " + Count(notation.index) + ", channel " + Count(notation.channel) + ": " +
             Utf8FromAnsi(notation.text));
  }
  if (!notes.freeText.empty()) output.Put("Notes:\n" + Utf8FromAnsi(notes.freeText) + '\n');
}

void AddStamp(Json& json, std::string_view name, TimeStamp stamp) {
  json.BeginObject(name);
  json.Number("stamp", stamp);
  json.Text("date", DateText(stamp));
  json.End();
}

void AddHeader(Json& json, const DataFileReader& reader) {
  const DataFileHeader& header = reader.Header();
  json.BeginObject("header");
  json.Text("version", header.version);
  AddStamp(json, "start", header.start);
  AddStamp(json, "end", header.end);
  json.Number("latitude", header.latitude);
  json.Number("longitudeWest", header.longitude);
  json.Number("yMax", header.yMax);
  json.Number("yMin", header.yMin);
  json.Number("timeZone", header.timeZone);
  json.Text("source", Trim(header.source));
  json.Text("author", Trim(header.author));
  json.Text("localName", Trim(header.localName));
  json.Text("location", Trim(header.location));
  json.Number("channels", header.channels);
  json.Number("notesLength", header.notesLength);
  json.End();
}

void AddLayout(Json& json, const DataFileReader& reader) {
  const NotesBlock& notes = reader.Notes();
  json.Number("samples", reader.WholeCount());
  json.Bool("integers", notes.integers);
  json.Bool("timeStamps", !notes.noTimeStamps);
  json.Bool("usingUT", notes.usingUT);
  json.Bool("lmst", notes.lmst);
  json.Bool("timeRefZero", notes.timeRefZero);
}

void AddItems(Json& json, const DataFileReader& reader) {
  const NotesBlock& notes = reader.Notes();
  json.BeginArray("channels");
  for (int i = 0; i < reader.Layout().channels; ++i) {
    json.BeginObject();
    json.Text("label", notes.labels[i]);
    json.Text("offset", notes.offsets[i]);
    json.End();
  }
  json.End();
  json.Text("xAxisTitle", notes.xAxisLabel);
  json.Text("yAxisTitle", notes.yAxisLabel);
  json.Text("notes", notes.freeText);
  json.BeginArray("metadata");
  for (const MetadataRecord& record : notes.metadata.Records()) {
    json.BeginObject();
    json.Text("name", record.name);
    json.Text("value", record.value);
    json.End();
  }
  json.End();
  json.BeginArray("notations");
  for (const Notation& notation : notes.notations.slots) {
    if (notation.text.empty()) continue;
    json.BeginObject();
    json.Number("index", notation.index);
    json.Number("channel", notation.channel);
    json.Text("text", notation.text);
    json.End();
  }
  json.End();
}

void PrintJson(Output& output, const DataFileReader& reader, const std::string& name) {
  Json json;
  json.BeginObject();
  json.Utf8("file", name);
  json.Number("bytes", static_cast<double>(reader.FileSize()));
  AddHeader(json, reader);
  AddLayout(json, reader);
  AddItems(json, reader);
  json.End();
  output.Put(json.Document());
}

}  // namespace

bool PrintInfo(const DataFileReader& reader, const std::string& name, bool json) {
  Output output;
  if (json) {
    PrintJson(output, reader, name);
    return output.Flush();
  }
  Line(output, "File", name);
  Line(output, "Size", Count(static_cast<std::int64_t>(reader.FileSize())) + " bytes");
  PutLayout(output, reader);
  PutHeader(output, reader);
  PutItems(output, reader);
  return output.Flush();
}

}  // namespace tarvolt
