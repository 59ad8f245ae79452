// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/station.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "files/format/data_file_reader.h"
#include "host/posix_file_system.h"
#include "text/number.h"

namespace tarvolt {

Home::Home() {
  std::string name = (std::filesystem::temp_directory_path() / "tarvolt stätion_XXXXXX").string();
  if (mkdtemp(name.data()) != nullptr) folder_ = name;
}

Home::~Home() {
  std::error_code ignored;
  if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path Home::Write(const std::string& name, const std::string& bytes) const {
  std::ofstream(folder_ / name, std::ios::binary) << bytes;
  return folder_ / name;
}

std::vector<std::filesystem::path> Home::DataFiles() const {
  std::vector<std::filesystem::path> found;
  std::error_code error;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(Data(), error)) {
    if (entry.path().extension() == ".tvd" && entry.path() != Backup()) found.push_back(entry.path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

std::filesystem::path Home::DataFile() const {
  const std::vector<std::filesystem::path> found = DataFiles();
  EXPECT_EQ(found.size(), 1U);
  return found.size() == 1 ? found.front() : std::filesystem::path();
}

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

Recorded ReadRecorded(const std::filesystem::path& file) {
  Recorded recorded;
  PosixFileSystem files;
  DataFileReader reader(files);
  if (reader.Open(file) != OpenResult::Ok) return recorded;
  recorded.header = reader.Header();
  recorded.layout = reader.Layout();
  FileSample sample;
  for (std::int32_t i = 0; i < reader.WholeCount() && reader.ReadSample(i, sample); ++i) {
    recorded.times.push_back(sample.time);
    recorded.samples.emplace_back(sample.values.begin(), sample.values.begin() + recorded.layout.channels);
  }
  return recorded;
}

RunningStation::RunningStation(const Home& home, const std::vector<std::string>& arguments,
                               const std::vector<std::string>& variables)
    : RunningProgram(
          "tarvoltd",
          [&] {
            std::vector<std::string> all = {"--home", home.Folder().string()};
            all.insert(all.end(), arguments.begin(), arguments.end());
            return all;
          }(),
          variables) {}

std::vector<std::string> Starting(const std::vector<std::string>& settings) {
  std::vector<std::string> arguments = {"--start"};
  for (const std::string& setting : settings) arguments.insert(arguments.end(), {"--set", setting});
  return arguments;
}

std::vector<std::string> Recording(std::uint16_t port, const std::vector<std::string>& settings) {
  std::vector<std::string> all = {"UDSport=" + NumberText(std::int64_t{port}), "Dsrc0=20", "Dsrc1=21", "UDSpush=True"};
  all.insert(all.end(), settings.begin(), settings.end());
  return Starting(all);
}

}  // namespace tarvolt
