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

  std::error_code ErrorOfOpening(const std::filesystem::path& path, OpenMode mode) {
    error_.clear();
    EXPECT_FALSE(files_.Open(path, mode, error_));
    return error_;
  }

  std::string Contents(const std::filesystem::path& path) {
    auto file = Open(path, OpenMode::Read);
    std::string bytes(1000, '\0');
    bytes.resize(file->Read(bytes.data(), bytes.size(), error_));
    EXPECT_FALSE(error_) << error_.message();
    return bytes;
  }

  void Put(const std::filesystem::path& path, std::string_view bytes) {
    auto file = Open(path, OpenMode::Create);
    file->Write(bytes, error_);
    EXPECT_FALSE(error_) << error_.message();
    file->Sync(error_);
    EXPECT_FALSE(error_) << error_.message();
  }

  TempFolder folder_;
  PosixFileSystem files_;
  std::error_code error_;
};

TEST_F(PosixFileSystemTest, ReadsAndWritesAtThePosition) {
  const auto path = folder_.Path() / "a.tvd";
  Put(path, "0123456789");
  auto file = Open(path, OpenMode::ReadWrite);
  file->Seek(4, error_);
  file->Write("xy", error_);
  std::string rest(10, '\0');
  EXPECT_EQ(file->Read(rest.data(), 10, error_), 4u);
  EXPECT_EQ(rest.substr(0, 4), "6789");
  EXPECT_FALSE(error_);
  file->Truncate(6, error_);
  EXPECT_EQ(file->Size(error_), 6u);
  EXPECT_EQ(Contents(path), "0123xy");
  Open(path, OpenMode::Create);
  EXPECT_EQ(Contents(path), "");
}

TEST_F(PosixFileSystemTest, AppendWritesToTheEndWhateverThePosition) {
  const auto path = folder_.Path() / "log.txt";
  auto first = Open(path, OpenMode::Append);
  auto second = Open(path, OpenMode::Append);
  first->Write("one ", error_);
  second->Write("two ", error_);
  first->Seek(0, error_);
  first->Write("three", error_);
  EXPECT_EQ(first->Size(error_), 13u) << "not that of the opening";
  first->Sync(error_);
  EXPECT_FALSE(error_);
  EXPECT_EQ(Contents(path), "one two three");

  Open(path, OpenMode::AppendExisting)->Write(" four", error_);
  EXPECT_EQ(Contents(path), "one two three four");
}

TEST_F(PosixFileSystemTest, TellsWhyAFileCannotBeUsed) {
  EXPECT_EQ(ErrorOfOpening(folder_.Path() / "none", OpenMode::Read), std::errc::no_such_file_or_directory);
  EXPECT_EQ(ErrorOfOpening(folder_.Path() / "none", OpenMode::ReadWrite), std::errc::no_such_file_or_directory);
  EXPECT_EQ(ErrorOfOpening(folder_.Path() / "none", OpenMode::AppendExisting), std::errc::no_such_file_or_directory);
  EXPECT_EQ(ErrorOfOpening(folder_.Path(), OpenMode::AppendExisting), std::errc::is_a_directory);
  EXPECT_EQ(ErrorOfOpening(folder_.Path() / "none" / "file", OpenMode::Append), std::errc::no_such_file_or_directory);
  EXPECT_EQ(ErrorOfOpening(folder_.Path(), OpenMode::Read), std::errc::is_a_directory);
  ASSERT_EQ(::mkfifo((folder_.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(ErrorOfOpening(folder_.Path() / "pipe", OpenMode::Read), std::errc::operation_not_supported);

  Put(folder_.Path() / "read", "x");
  Open(folder_.Path() / "read", OpenMode::Read)->Write("y", error_);
  EXPECT_EQ(error_, std::errc::bad_file_descriptor);
  Open("/dev/full", OpenMode::ReadWrite)->Write("y", error_);
  EXPECT_EQ(error_, std::errc::no_space_on_device);
  Open(folder_.Path() / "read", OpenMode::ReadWrite)->Truncate(~std::uint64_t{0}, error_);
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

TEST_F(PosixFileSystemTest, RenameReplacesAndRemoveForgivesWhatIsNotThere) {
  const auto from = folder_.Path() / "new.tmp";
  const auto to = folder_.Path() / "old.tvd";
  Put(from, "new");
  Put(to, "old");
  files_.Rename(from, to, error_);
  EXPECT_FALSE(error_) << error_.message();
  EXPECT_EQ(Contents(to), "new");
  EXPECT_FALSE(files_.FileExists(from));

  files_.Rename(from, to, error_);
  EXPECT_EQ(error_, std::errc::no_such_file_or_directory);
  EXPECT_EQ(Contents(to), "new");
  files_.Remove(to, error_);
  EXPECT_FALSE(error_);
  EXPECT_FALSE(files_.FileExists(to));
  files_.Remove(to, error_);
  EXPECT_FALSE(error_);
}

TEST_F(PosixFileSystemTest, MakesFoldersAndListsTheFilesInThem) {
  const auto deep = folder_.Path() / "2026" / "11" / "22";
  files_.MakeFolders(deep, error_);
  EXPECT_FALSE(error_) << error_.message();
  EXPECT_TRUE(files_.FolderExists(deep));
  EXPECT_FALSE(files_.FileExists(deep));
  files_.MakeFolders(deep / "", error_);
  EXPECT_FALSE(error_) << error_.message();

  for (const char* name : {"b", "a", "c"}) Put(folder_.Path() / name, "");
  std::filesystem::create_symlink("nowhere", folder_.Path() / "broken");
  EXPECT_EQ(files_.ListFiles(folder_.Path(), error_), (std::vector<std::filesystem::path>{"a", "b", "c"}));
  EXPECT_FALSE(error_);

  files_.MakeFolders(folder_.Path() / "a" / "below", error_);
  EXPECT_EQ(error_, std::errc::file_exists);
  files_.Remove(folder_.Path() / "2026", error_);
  EXPECT_EQ(error_, std::errc::directory_not_empty);
  files_.ListFiles(folder_.Path() / "none", error_);
  EXPECT_EQ(error_, std::errc::no_such_file_or_directory);
}

TEST_F(PosixFileSystemTest, NamesAreSingleByteInsideAndUtf8OnTheDisk) {
  const std::filesystem::path single = "Sagitt\xE4r \x80.tvd";
  const std::filesystem::path onDisk = "Sagitt\xC3\xA4r \xE2\x82\xAC.tvd";
  Put(folder_.Path() / single, "data");
  EXPECT_TRUE(std::filesystem::exists(folder_.Path() / onDisk));
  EXPECT_EQ(files_.ListFiles(folder_.Path(), error_), std::vector{single});
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
