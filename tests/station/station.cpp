// SPDX-License-Identifier: GPL-3.0-or-later
#include "station/station.h"

#include <algorithm>

#include "files/format/data_file_reader.h"
#include "text/number.h"

namespace tarvolt {

namespace {

using namespace std::chrono_literals;

constexpr const char* kHome = "/station";
constexpr const char* kBackup = "localdatabackup.tvd";

bool Holds(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

// The second channel is the first negated, so that a mix-up of channels shows.
Station::Station(std::uint64_t seed, const WallTime& ut) : host(seed, ut), uds(host.loop, host.network) {
  uds.Channels(2).Measures([](std::int64_t set) {
    return std::vector<double>{static_cast<double>(set), -static_cast<double>(set)};
  });
  uds.PushesEvery(100ms);
  host.network.weather.delay = 0ms;
  Set("Dsrc0", 20).Set("Dsrc1", 21).Set("UDSpush", true).Set("PromptBeforeSaving", false);
  Set("OrganizeByMonth", false).Set("OrganizeByDay", false);
}

Station::~Station() = default;

Station& Station::Set(std::string_view key, std::string_view value) {
  overrides_.emplace_back(key, value);
  if (session_) {
    session_->overrides = overrides_;
    ApplySetting(session_->settings, key, value);
  }
  return *this;
}

Station& Station::Set(std::string_view key, int value) {
  return Set(key, std::string_view(NumberText(std::int64_t{value})));
}

Station& Station::Boot(const std::string& commandLine) {
  if (form_) return *this;
  session_ = std::make_unique<Session>(host.Record(), kHome);
  session_->overrides = overrides_;
  lastLog_.clear();
  session_->log.AddListener([this](const std::string& line) { lastLog_ += line + "\n"; });
  form_ = std::make_unique<FormMain>(*session_, *person_);
  form_->Form_Load(commandLine);
  return *this;
}

Station& Station::StartChart() {
  Boot();
  form_->StartChart("");
  return *this;
}

Station& Station::StopChart() {
  form_->StopChart();
  return *this;
}

Station& Station::RunFor(std::chrono::milliseconds span) {
  Boot();
  host.loop.RunFor(span);
  return *this;
}

Station& Station::RunForSets(std::int64_t sets) {
  Boot();
  host.loop.RunUntil([&] { return uds.SetsSent() >= sets; }, 24h * 400);
  host.loop.RunFor(1ms);
  return *this;
}

Station& Station::ShutDown() {
  form_->Form_Unload();
  form_.reset();
  session_.reset();
  return *this;
}

Station& Station::Kill() {
  host.Kill();
  form_.reset();
  session_.reset();
  host.Reboot();
  return *this;
}

std::vector<std::string> Station::DataFiles(bool rescued) const {
  std::vector<std::string> files;
  for (const auto& [name, bytes] : host.disk.AllFiles()) {
    if (!name.ends_with(".tvd") || Holds(name, kBackup)) continue;
    if (Holds(name, "/recovery/") == rescued) files.push_back(name);
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> Station::FilesSaved() const {
  return DataFiles(false);
}

std::vector<std::string> Station::FilesRescued() const {
  return DataFiles(true);
}

std::vector<Sample> Station::SamplesIn(const std::string& file) {
  DataFileReader reader(host.disk);
  std::vector<Sample> samples;
  if (reader.Open(file) != OpenResult::Ok) return samples;
  FileSample raw;
  for (std::int32_t i = 0; i < reader.WholeCount() && reader.ReadSample(i, raw); ++i) {
    samples.push_back(
        {raw.time, std::vector<double>(raw.values.begin(), raw.values.begin() + reader.Header().channels)});
  }
  return samples;
}

std::vector<double> Station::FirstChannelIn(const std::string& file) {
  std::vector<double> values;
  for (const Sample& sample : SamplesIn(file)) values.push_back(sample.values.at(0));
  return values;
}

std::vector<double> Station::FirstChannelInFilesAndStore() {
  std::vector<double> values;
  for (const std::string& file : FilesSaved()) {
    const std::vector<double> part = FirstChannelIn(file);
    values.insert(values.end(), part.begin(), part.end());
  }
  if (!Running()) return values;
  for (const Sample& sample : Stored()) values.push_back(sample.values.at(0));
  return values;
}

std::vector<Sample> Station::Stored() const {
  std::vector<Sample> samples;
  for (std::int32_t i = 0; i < Chart().Count(); ++i) {
    samples.push_back({Chart().GetTime(i), {}});
    for (int channel = 0; channel < Chart().ChannelCount(); ++channel) {
      samples.back().values.push_back(Chart().GetValue(channel, i));
    }
  }
  return samples;
}

bool Station::LastFileHolds(std::string_view words) const {
  const std::vector<std::string> files = FilesSaved();
  return !files.empty() && Holds(*host.disk.Contents(files.back()), words);
}

std::string Station::Log() const {
  return lastLog_;
}

int Station::LogLines(std::string_view words) const {
  int count = 0;
  for (auto at = lastLog_.find(words); at != std::string::npos; at = lastLog_.find(words, at + 1)) ++count;
  return count;
}

std::vector<double> Ramp(int count) {
  std::vector<double> values(count);
  for (int i = 0; i < count; ++i) values[i] = i;
  return values;
}

}  // namespace tarvolt
