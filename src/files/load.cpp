// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/load.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

constexpr std::int32_t kSamplesBetweenCalls = 5000;

std::string WordsOf(OpenResult result, const std::string& name) {
  switch (result) {
    case OpenResult::Ok:
      break;
    case OpenResult::Missing:
      return "Cannot Find the file: " + name + "\n";
    case OpenResult::TooShort:
      return "The file: " + name + "\nAppears to have no data.";
    case OpenResult::Corrupted:
      return "The file: " + name + "\nIs corrupted or not a valid data file.";
    case OpenResult::Unreadable:
      return "The file: " + name + "\nCannot be read.";
  }
  return {};
}

LoadRange HeldRange(LoadRange range, std::int32_t lastOfFile) {
  if (range.lastIndex > lastOfFile || range.lastIndex <= 0) range.lastIndex = lastOfFile;
  if (range.firstIndex > range.lastIndex || range.firstIndex < 0) range.firstIndex = 0;
  return range;
}

// The table is emptied before the ticks are taken over: they are only added to it, and a form that was cancelled leaves
// no channel.
void AskForChannels(const AskChannels& ask, const NotesBlock& notes, int channels, LoadOptions& options) {
  options.ChannelSelected.fill(false);
  std::fill_n(options.ChannelSelected.begin(), std::min(channels, kChannels), true);
  if (!ask) return;
  const std::optional<ChannelAnswer> answer =
      ask({channels, notes.labels, options.ChannelSelected, options.LoadLocalOffsets});
  options.ChannelSelected.fill(false);
  if (!answer) return;
  options.ChannelSelected = answer->ticked;
  options.LoadLocalOffsets = answer->localOffsets;
}

// In a layout of doubles without stamps the last index is one too high (meant). With more channels the sample behind
// the end repeats the last one; a single channel ends with its file.
std::int32_t SamplesToWalk(const DataFileReader& reader) {
  const std::int32_t counted = reader.LastIndex() + 1;
  return reader.Layout().channels == 1 ? std::min(counted, reader.WholeCount()) : counted;
}

/// Samples on their way into a chart, by columns: a piece at a time takes a fraction of what each by itself does.
class SamplePiece {
 public:
  SamplePiece(StripChart& chart, const ChannelMap& channels) : chart_(chart), channels_(channels) {
    values_.resize(static_cast<std::size_t>(channels.count), std::vector<double>(kSamplesOfPiece));
  }

  /// False when the chart could not take the samples before it.
  bool Add(const FileSample& sample) {
    times_[count_] = sample.time;
    for (int channel = 0; channel < channels_.count; ++channel) {
      double value = sample.values[channels_.source[channel]];
      if (channels_.addsOffsets) value += channels_.offset[channel];
      values_[static_cast<std::size_t>(channel)][count_] = value;
    }
    return ++count_ < kSamplesOfPiece || Store();
  }

  /// Gives the chart what is on its way. False when it has no room for all of it: it has taken as many as it could.
  bool Store() {
    const std::size_t count = std::exchange(count_, 0);
    std::vector<std::span<const double>> values;
    for (const std::vector<double>& column : values_) values.emplace_back(column.data(), count);
    return chart_.AddSamples({times_.data(), count}, values) || StoreOneByOne(count);
  }

 private:
  static constexpr std::size_t kSamplesOfPiece = 500;  // divides kSamplesBetweenCalls

  bool StoreOneByOne(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::int32_t index = chart_.AddTime(times_[i]);
      if (chart_.Count() != index + 1) return false;
      for (int channel = 0; channel < channels_.count; ++channel) {
        chart_.SetValue(channel, index, values_[static_cast<std::size_t>(channel)][i]);
      }
    }
    return true;
  }

  StripChart& chart_;
  const ChannelMap& channels_;
  std::array<double, kSamplesOfPiece> times_{};
  std::vector<std::vector<double>> values_;
  std::size_t count_ = 0;
};

}  // namespace

Outcome ChartLoad::Open(const std::filesystem::path& file) {
  const OpenResult opened = reader_.Open(file);
  if (opened != OpenResult::Ok) return Failure{WordsOf(opened, file.string())};
  reader_.Force(request_.forced);
  const LoadRange& wanted = request_.range;
  chart_ = {.file = file,
            .fileSize = reader_.FileSize(),
            .header = reader_.Header(),
            .notes = reader_.Notes(),
            .pens = StripChart::kOwnPens,
            .range = HeldRange(wanted, reader_.LastIndex()),
            .lastIndex = reader_.LastIndex(),
            .options = request_.options,
            .partial = wanted.firstIndex >= 1 || wanted.lastIndex >= 1,
            .forced = request_.forced.Any(),
            .tornSample = reader_.EndsWithinSample()};
  return Done();
}

// The end that a header names is that of the sample before the last.
std::string WhatIsMissing(const FileChart& file, const StripChart& chart) {
  if (file.partial || file.forced || !file.HasData()) return {};
  const std::int32_t last = chart.Count() - 1;
  if (last > 0 && chart.Samples().TimesRise() && !file.notes.timeRefZero) {
    const double days = file.header.end - chart.GetTime(last);
    const double period = (chart.GetTime(last) - chart.GetTime(0)) / last;
    if (period > 0 && days > period / 2) {
      return "It ends " + FormatNumber(days * kSecondsPerDay, "#########0.###") +
             " seconds before the end that its header names: about " +
             NumberText(static_cast<std::int64_t>(std::llround(days / period)) + 1) + " samples are missing.";
    }
  }
  return file.tornSample ? "It ends within a sample: what came behind is missing." : "";
}

bool ChartLoad::ChooseChannels() {
  const int inFile = reader_.Layout().channels;
  LoadOptions& options = chart_.options;
  channels_ = AllChannels(inFile);
  if (chart_.HasData() && (request_.keepSelection || options.LoadSelectedChannels)) {
    if (!request_.keepSelection) AskForChannels(request_.askChannels, chart_.notes, inFile, options);
    channels_ = SelectedChannels(options.ChannelSelected, inFile);
  }
  if (channels_.count == 0) return false;
  AddOffsets(options, request_.stationOffsets, chart_.notes, channels_);
  if (channels_.selected) PackChannels(channels_, chart_.notes, chart_.pens);
  if (chart_.partial && chart_.HasData()) {
    chart_.notes.notations = chart_.notes.notations.Within(chart_.range.firstIndex, chart_.range.lastIndex);
  }
  chart_.channels = channels_.count + request_.extraChannels;
  return true;
}

bool ChartLoad::ReadSamples(StripChart& chart, const LoadProgress& progress) {
  chart.SetChannelCount(chart_.channels);
  if (!chart_.HasData()) return true;
  chart.SetCapacity(std::max(chart.Capacity(), chart_.lastIndex + 1));
  const LoadRange& range = chart_.range;
  const std::int32_t count = SamplesToWalk(reader_);
  FileSample sample;
  SamplePiece piece(chart, channels_);
  for (std::int32_t i = 0; i < count; ++i) {
    const bool wanted = i >= range.firstIndex && i <= range.lastIndex;
    if (!reader_.ReadSample(i, sample)) {
      // Damage outside the range costs nothing: what lies before it is passed over, what lies behind it is not needed.
      if (wanted) {
        piece.Store();
        return false;
      }
      if (i > range.lastIndex) return piece.Store();
      i = range.firstIndex - 1;
      continue;
    }
    if (wanted && !piece.Add(sample)) return false;
    if ((i + 1) % kSamplesBetweenCalls != 0 || !progress) continue;
    if (!piece.Store() || !progress(chart.Count())) return false;
  }
  return piece.Store();
}

}  // namespace tarvolt
