// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "commands.h"
#include "output.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// As in RFC 4180: quoted when it holds a separator, a quote or a line end.
std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  return '"' + ReplaceAll(text, "\"", "\"\"") + '"';
}

// A label must not break the columns.
std::string PlainField(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

std::string Heading(const DataFileReader& reader, bool csv) {
  std::string line = csv ? "index,stamp,date" : "index\tstamp\tdate";
  for (int i = 0; i < reader.Layout().channels; ++i) {
    std::string label = Utf8FromAnsi(reader.Notes().labels[i]);
    if (label.empty()) label = "CH " + NumberText(std::int64_t{i + 1});
    line += csv ? ',' + CsvField(label) : '\t' + PlainField(label);
  }
  return line + '\n';
}

void PutSample(Output& output, std::int32_t index, const FileSample& sample, int channels, char separator) {
  std::string line = NumberText(std::int64_t{index});
  line += separator;
  line += Exact(sample.time);
  line += separator;
  line += DateText(sample.time);
  for (int i = 0; i < channels; ++i) {
    line += separator;
    line += Exact(sample.values[i]);
  }
  output.Put(line + '\n');
}

}  // namespace

bool PrintSamples(DataFileReader& reader, const std::string& name, const DumpRange& range, bool csv) {
  const std::int32_t last = reader.WholeCount() - 1;
  const std::int32_t from = range.from.value_or(0);
  const std::int32_t to = std::min(range.to.value_or(last), last);
  if (from > last) {
    Complain(name + ": holds " + NumberText(std::int64_t{last + 1}) + " samples, none from " +
             NumberText(std::int64_t{from}) + " on");
    return false;
  }
  Output output;
  output.Put(Heading(reader, csv));
  FileSample sample;
  for (std::int32_t i = from; i <= to && output.Good(); ++i) {
    if (!reader.ReadSample(i, sample)) {
      Complain(name + ": cannot be read beyond sample " + NumberText(std::int64_t{i}) + ": " +
               reader.Error().message());
      return false;
    }
    PutSample(output, i, sample, reader.Layout().channels, csv ? ',' : '\t');
  }
  return output.Flush();
}

}  // namespace tarvolt
