// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/posix_file_system.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>

#include "host/disk_path.h"
#include "temp_folder.h"

namespace tarvolt {
namespace {

class PosixFileSystemTest : public testing::Test {
 protected:
  std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode) {
    auto file = files_.Open(path, mode, error_);
    EXPECT_TRUE(file) << path << ": " << error_.message();
    return file;
  }

  std::string Contents(const std::filesystem::path& path) {
    std::string bytes(1000, '\0');
    bytes.resize(Open(path, OpenMode::Read)->Read(bytes.data(), bytes.size(), error_));
    return bytes;
  }

  TempFolder folder_;
  PosixFileSystem files_;
  std::error_code error_;
};

TEST_F(PosixFileSystemTest, SaysWhyAFileCannotBeUsed) {
  ASSERT_EQ(::mkfifo((folder_.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(files_.Open(folder_.Path() / "pipe", OpenMode::Read, error_));
  EXPECT_EQ(error_, std::errc::operation_not_supported);

  Open("/dev/full", OpenMode::ReadWrite)->Write("y", error_);
  EXPECT_EQ(error_, std::errc::no_space_on_device);
  Open(folder_.Path() / "new", OpenMode::Create)->Truncate(~std::uint64_t{0}, error_);
  EXPECT_EQ(error_, std::errc::value_too_large);
}

TEST_F(PosixFileSystemTest, FilesAreNotInheritedByStartedPrograms) {
  const auto file = Open(folder_.Path() / "open", OpenMode::Create);
  int found = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (std::filesystem::read_symlink(entry.path(), gone) != folder_.Path() / "open") continue;
    ++found;
    EXPECT_TRUE(::fcntl(std::stoi(entry.path().filename().native()), F_GETFD) & FD_CLOEXEC);
  }
  EXPECT_EQ(found, 1);
}

TEST_F(PosixFileSystemTest, NamesAreSingleByteInsideAndUtf8OnTheDisk) {
  const std::filesystem::path single = "Sagitt\xE4r \x80.tvd";
  const std::filesystem::path onDisk = "Sagitt\xC3\xA4r \xE2\x82\xAC.tvd";
  Open(folder_.Path() / single, OpenMode::Create)->Write("data", error_);
  EXPECT_TRUE(std::filesystem::exists(folder_.Path() / onDisk));
  EXPECT_EQ(Contents(folder_.Path() / onDisk), "data") << "a name from a shell";

  const std::filesystem::path shellFolder = folder_.Path() / "M\xC3\xBCnchen";
  files_.MakeFolders(shellFolder /
                         "S\xFC"
                         "d",
                     error_);
  EXPECT_TRUE(std::filesystem::exists(shellFolder / "S\xC3\xBC"
                                                    "d"))
      << "each part of a path is judged by itself";
}

TEST_F(PosixFileSystemTest, ListedNamesLeadBackToTheirFiles) {
  const std::string greek = "\xCE\xB1.tvd";      // no letter of the code page
  const std::string twice = "\xC3\x83\xC2\xA9";  // its single-byte form would itself be read as UTF-8
  for (const auto& name : {greek, twice, std::string("raw\xE4.tvd")}) std::ofstream(folder_.Path() / name) << name;
  std::filesystem::create_symlink("nowhere", folder_.Path() / "broken");
  const auto names = files_.ListFiles(folder_.Path(), error_);
  EXPECT_EQ(names, (std::vector<std::filesystem::path>{twice, greek}));
  for (const auto& name : names) EXPECT_EQ(Contents(folder_.Path() / name), name.native());
}

TEST(DiskPath, TakesMalformedUtf8ForSingleByteText) {
  EXPECT_EQ(DiskPath("\xC0\xAF"), "\xC3\x80\xC2\xAF") << "overlong";
  EXPECT_EQ(DiskPath("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xE2\x82\xAC") << "a surrogate";
  EXPECT_EQ(DiskPath("a\xE2\x82"), "a\xC3\xA2\xE2\x80\x9A") << "cut short";
  EXPECT_EQ(DiskPath("\xF0\x9F\x94\xAD/\xE4"), "\xF0\x9F\x94\xAD/\xC3\xA4");
  EXPECT_EQ(DiskPath("/home/\xE4/"), "/home/\xC3\xA4/");
}

}  // namespace
}  // namespace tarvolt
