// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/program.h"
#include "files/format/sample_layout.h"
#include "model/data_file_header.h"

namespace tarvolt {

/// A station's home: an empty folder of its own, with a name that is not plain ASCII, removed with everything in it at
/// the end.
class Home {
 public:
  Home();
  ~Home();

  Home(const Home&) = delete;
  Home& operator=(const Home&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  std::filesystem::path Data() const { return folder_ / "Data"; }
  std::filesystem::path Backup() const { return Data() / "localdatabackup.tvd"; }

  /// A file of that name in it.
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const;

  /// All data files but the backup, in the order of their names: what was saved and what was rescued.
  std::vector<std::filesystem::path> DataFiles() const;

  /// The one data file; a failure of the test when there are none or more.
  std::filesystem::path DataFile() const;

 private:
  std::filesystem::path folder_;
};

/// All bytes of a file; empty when there is none.
std::string BytesOf(const std::filesystem::path& file);

/// What stands in a data file.
struct Recorded {
  DataFileHeader header;
  SampleLayout layout;
  std::vector<TimeStamp> times;
  std::vector<std::vector<double>> samples;  ///< the values of all channels, sample after sample
};

/// Reads a data file. A missing or damaged one gives no samples.
Recorded ReadRecorded(const std::filesystem::path& file);

/// The unattended station on a home.
class RunningStation : public RunningProgram {
 public:
  RunningStation(const Home& home, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& variables = {});
};

/// The arguments of a station that starts a chart with these settings, each KEY=VALUE.
std::vector<std::string> Starting(const std::vector<std::string>& settings);

/// The arguments of a station that records two pushed channels from a port of this machine at once, with further
/// settings as KEY=VALUE.
std::vector<std::string> Recording(std::uint16_t port, const std::vector<std::string>& settings = {});

}  // namespace tarvolt
