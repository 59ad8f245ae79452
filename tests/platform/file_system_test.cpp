// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/machine.h"

namespace tarvolt {
namespace {

using Path = std::filesystem::path;

class FileSystemContract : public Contract {
 protected:
  std::unique_ptr<File> Open(const Path& path, OpenMode mode) {
    auto file = host_.files.Open(path, mode, error_);
    EXPECT_TRUE(file) << path << ": " << error_.message();
    return file;
  }

  std::error_code ErrorOfOpening(const Path& path, OpenMode mode) {
    EXPECT_FALSE(host_.files.Open(path, mode, error_)) << path;
    return error_;
  }

  std::string Contents(const Path& path) {
    const auto file = Open(path, OpenMode::Read);
    std::string bytes(1000, '\0');
    bytes.resize(file->Read(bytes.data(), bytes.size(), error_));
    EXPECT_FALSE(error_) << error_.message();
    return bytes;
  }

  void Put(const Path& path, std::string_view bytes) {
    const auto file = Open(path, OpenMode::Create);
    file->Write(bytes, error_);
    EXPECT_FALSE(error_) << error_.message();
    file->Sync(error_);
    EXPECT_FALSE(error_) << error_.message();
  }

  Path folder_ = machine_->Folder();
  std::error_code error_ = std::make_error_code(std::errc::io_error);  // cleared by what succeeds
};
INSTANTIATE_CONTRACT(FileSystemContract);

TEST_P(FileSystemContract, ReadsAndWritesAtThePosition) {
  const Path path = folder_ / "a.tvd";
  Put(path, "0123456789");
  const auto file = Open(path, OpenMode::ReadWrite);
  file->Seek(4, error_);
  file->Write("xy", error_);
  std::string rest(10, '\0');
  EXPECT_EQ(file->Read(rest.data(), 10, error_), 4u);
  EXPECT_EQ(rest.substr(0, 4), "6789");
  EXPECT_EQ(file->Read(rest.data(), 10, error_), 0u);
  EXPECT_FALSE(error_);
  file->Truncate(5, error_);
  EXPECT_EQ(file->Size(error_), 5u);
  file->Seek(7, error_);
  file->Write("z", error_);
  EXPECT_EQ(Contents(path), std::string("0123x\0\0z", 8)) << "a hole reads as zeros";
  Open(path, OpenMode::Create);
  EXPECT_EQ(Contents(path), "");
}

TEST_P(FileSystemContract, AppendWritesToTheEndWhateverThePosition) {
  const Path path = folder_ / "log.txt";
  const auto first = Open(path, OpenMode::Append);
  const auto second = Open(path, OpenMode::Append);
  first->Write("one ", error_);
  second->Write("two ", error_);
  first->Seek(0, error_);
  first->Write("three", error_);
  EXPECT_EQ(first->Size(error_), 13u) << "not that of the opening";
  Open(path, OpenMode::AppendExisting)->Write(" four", error_);
  EXPECT_EQ(Contents(path), "one two three four");
}

TEST_P(FileSystemContract, SaysWhyAFileCannotBeUsed) {
  for (const OpenMode mode : {OpenMode::Read, OpenMode::ReadWrite, OpenMode::AppendExisting}) {
    EXPECT_EQ(ErrorOfOpening(folder_ / "none", mode), std::errc::no_such_file_or_directory);
  }
  for (const OpenMode mode : {OpenMode::Create, OpenMode::Append}) {
    EXPECT_EQ(ErrorOfOpening(folder_ / "none" / "file", mode), std::errc::no_such_file_or_directory);
  }
  for (const OpenMode mode : {OpenMode::Read, OpenMode::AppendExisting}) {
    EXPECT_EQ(ErrorOfOpening(folder_, mode), std::errc::is_a_directory);
  }
  Put(folder_ / "read", "x");
  Open(folder_ / "read", OpenMode::Read)->Write("y", error_);
  EXPECT_TRUE(error_);
  EXPECT_EQ(Contents(folder_ / "read"), "x");
}

TEST_P(FileSystemContract, RenameReplacesAndRemoveForgivesWhatIsNotThere) {
  const Path from = folder_ / "new.tmp";
  const Path to = folder_ / "old.tvd";
  Put(from, "new");
  Put(to, "old");
  const auto openBefore = Open(to, OpenMode::Append);
  host_.files.Rename(from, to, error_);
  EXPECT_FALSE(error_) << error_.message();
  openBefore->Write("er", error_);
  EXPECT_FALSE(error_) << "an open file outlives its name";
  EXPECT_EQ(Contents(to), "new");
  EXPECT_FALSE(host_.files.FileExists(from));

  host_.files.Rename(from, to, error_);
  EXPECT_EQ(error_, std::errc::no_such_file_or_directory);
  EXPECT_EQ(Contents(to), "new");
  for (int time = 0; time < 2; ++time) {
    host_.files.Remove(to, error_);
    EXPECT_FALSE(error_) << time;
    EXPECT_FALSE(host_.files.FileExists(to));
  }
}

TEST_P(FileSystemContract, MakesFoldersAndListsTheFilesInThem) {
  const Path deep = folder_ / "2026" / "11" / "22";
  for (const Path& path : {deep, deep / ""}) {
    host_.files.MakeFolders(path, error_);
    EXPECT_FALSE(error_) << error_.message();
  }
  EXPECT_TRUE(host_.files.FolderExists(deep));
  EXPECT_FALSE(host_.files.FileExists(deep));
  const std::vector<Path> names = {"Sagitt\xE4r \x80.tvd", "a", "b"};
  for (const Path& name : {names[2], names[0], names[1]}) Put(folder_ / name, "");
  const auto listed = host_.files.ListFiles(folder_, error_);
  EXPECT_FALSE(error_) << error_.message();
  EXPECT_EQ(listed, names);

  host_.files.MakeFolders(folder_ / "a" / "below", error_);
  EXPECT_TRUE(error_) << "a file stands in the way";
  host_.files.Remove(folder_ / "2026", error_);
  EXPECT_EQ(error_, std::errc::directory_not_empty);
  host_.files.ListFiles(folder_ / "none", error_);
  EXPECT_EQ(error_, std::errc::no_such_file_or_directory);
}

}  // namespace
}  // namespace tarvolt
