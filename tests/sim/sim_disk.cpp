// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_disk.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "sim/sim_disk_node.h"

namespace tarvolt {

namespace {

std::error_code Error(std::errc reason) {
  return std::make_error_code(reason);
}

}  // namespace

class SimDisk::OpenFile final : public File {
 public:
  OpenFile(SimDisk& disk, std::shared_ptr<Node> node, OpenMode mode)
      : disk_(disk), node_(std::move(node)), mode_(mode), boot_(disk.boots_) {}

  std::size_t Read(void* bytes, std::size_t size, std::error_code& error) override {
    if (!Usable(error) || position_ >= node_->bytes.size()) return 0;
    const std::size_t count = std::min<std::uint64_t>(size, node_->bytes.size() - position_);
    std::memcpy(bytes, node_->bytes.data() + position_, count);
    position_ += count;
    return count;
  }

  void Write(std::string_view bytes, std::error_code& error) override {
    if (!Writable(error)) return;
    if (mode_ == OpenMode::Append || mode_ == OpenMode::AppendExisting) position_ = node_->bytes.size();
    disk_.WriteNode(*node_, position_, bytes, error);
    if (!error) position_ += bytes.size();
  }

  void Seek(std::uint64_t position, std::error_code& error) override {
    if (Usable(error)) position_ = position;
  }

  std::uint64_t Size(std::error_code& error) override { return Usable(error) ? node_->bytes.size() : 0; }

  void Truncate(std::uint64_t size, std::error_code& error) override {
    if (!Writable(error)) return;
    if (disk_.RoomFor(*node_, 0, size) < size) {
      error = Error(std::errc::no_space_on_device);
      return;
    }
    disk_.Operate(error, [&] { disk_.ChangeNode(*node_, size); });
  }

  void Sync(std::error_code& error) override {
    if (Usable(error)) disk_.Operate(error, [&] { disk_.SyncNode(*node_); });
    if (disk_.onSync_) disk_.onSync_();
  }

 private:
  bool Usable(std::error_code& error) const {
    if (!disk_.Alive(error)) return false;
    if (boot_ != disk_.boots_) error = Error(std::errc::bad_file_descriptor);
    return !error;
  }

  bool Writable(std::error_code& error) const {
    if (Usable(error) && mode_ == OpenMode::Read) error = Error(std::errc::bad_file_descriptor);
    return !error;
  }

  SimDisk& disk_;
  std::shared_ptr<Node> node_;
  OpenMode mode_;
  std::uint64_t boot_;
  std::uint64_t position_ = 0;
};

SimDisk::SimDisk(std::uint64_t seed) : random_(seed) {}

SimDisk::~SimDisk() = default;

std::unique_ptr<File> SimDisk::Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) {
  if (!Alive(error)) return nullptr;
  std::shared_ptr<Node> node = OpenNode(KeyOf(path), mode, error);
  if (error) return nullptr;
  return std::make_unique<OpenFile>(*this, std::move(node), mode);
}

std::shared_ptr<SimDisk::Node> SimDisk::OpenNode(const Key& key, OpenMode mode, std::error_code& error) {
  if (IsFolder(key)) {
    error = Error(std::errc::is_a_directory);
    return nullptr;
  }
  if (unreadable_.contains(key) || (mode != OpenMode::Read && IsReadOnly(key))) {
    error = Error(std::errc::permission_denied);
    return nullptr;
  }
  std::shared_ptr<Node> node = FindFile(key);
  const bool mayMake = mode == OpenMode::Create || mode == OpenMode::Append;
  if (node == nullptr && (!mayMake || !IsFolder(ParentOf(key)))) {
    error = Error(std::errc::no_such_file_or_directory);
    return nullptr;
  }
  if (node == nullptr) {
    node = std::make_shared<Node>();
    Operate(error, [&] { NamesToChange().files[key] = node; });
  } else if (mode == OpenMode::Create && !node->bytes.empty()) {
    Operate(error, [&] { ChangeNode(*node, 0); });
  }
  return node;
}

bool SimDisk::FileExists(const std::filesystem::path& path) {
  std::error_code error;
  return Alive(error) && FindFile(KeyOf(path)) != nullptr;
}

bool SimDisk::FolderExists(const std::filesystem::path& path) {
  std::error_code error;
  return Alive(error) && IsFolder(KeyOf(path));
}

void SimDisk::MakeFolders(const std::filesystem::path& path, std::error_code& error) {
  if (!Alive(error)) return;
  std::vector<Key> made;
  for (Key key = KeyOf(path); !IsFolder(key); key = ParentOf(key)) {
    if (FindFile(key) != nullptr) {
      error = Error(std::errc::not_a_directory);
      return;
    }
    made.push_back(key);
  }
  if (made.empty()) return;
  if (IsReadOnly(made.back())) {
    error = Error(std::errc::permission_denied);
    return;
  }
  Operate(error, [&] { NamesToChange().folders.insert(made.begin(), made.end()); });
}

void SimDisk::Rename(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) {
  if (!Alive(error)) return;
  const Key fromKey = KeyOf(from);
  const Key toKey = KeyOf(to);
  const std::shared_ptr<Node> node = FindFile(fromKey);
  if (IsFolder(fromKey) || IsFolder(toKey)) {
    error = Error(std::errc::is_a_directory);
  } else if (node == nullptr || !IsFolder(ParentOf(toKey))) {
    error = Error(std::errc::no_such_file_or_directory);
  } else if (IsReadOnly(fromKey) || IsReadOnly(toKey)) {
    error = Error(std::errc::permission_denied);
  } else if (fromKey != toKey) {
    Operate(error, [&] {
      Names& names = NamesToChange();
      names.files[toKey] = node;
      names.files.erase(fromKey);
    });
  }
}

void SimDisk::Remove(const std::filesystem::path& path, std::error_code& error) {
  if (!Alive(error)) return;
  const Key key = KeyOf(path);
  if (!IsFolder(key) && FindFile(key) == nullptr) return;
  if (IsReadOnly(key)) {
    error = Error(std::errc::permission_denied);
  } else if (IsFolder(key) && !IsEmptyFolder(key)) {
    error = Error(std::errc::directory_not_empty);
  } else {
    Operate(error, [&] {
      Names& names = NamesToChange();
      names.folders.erase(key);
      names.files.erase(key);
    });
  }
}

std::vector<std::filesystem::path> SimDisk::ListFiles(const std::filesystem::path& folder, std::error_code& error) {
  std::vector<std::filesystem::path> names;
  if (!Alive(error)) return names;
  const Key key = KeyOf(folder);
  if (!IsFolder(key)) {
    error = Error(std::errc::no_such_file_or_directory);
    return names;
  }
  const Key prefix = key == "/" ? key : key + "/";
  for (auto file = names_.files.lower_bound(prefix); file != names_.files.end() && file->first.starts_with(prefix);
       ++file) {
    const std::string_view rest = std::string_view(file->first).substr(prefix.size());
    if (rest.find('/') == std::string_view::npos) names.emplace_back(rest);
  }
  return names;
}

std::optional<std::string> SimDisk::Contents(const std::filesystem::path& path) const {
  const std::shared_ptr<Node> node = FindFile(KeyOf(path));
  if (node == nullptr) return std::nullopt;
  return node->bytes;
}

std::map<std::string, std::string> SimDisk::AllFiles() const {
  std::map<std::string, std::string> all;
  for (const auto& [key, node] : names_.files) all.emplace(key, node->bytes);
  return all;
}

std::uint64_t SimDisk::Used() const {
  std::uint64_t used = 0;
  for (const auto& [key, node] : names_.files) used += node->bytes.size();
  return used;
}

void SimDisk::Put(const std::filesystem::path& path, std::string_view bytes) {
  const Key key = KeyOf(path);
  for (Key folder = ParentOf(key); !IsFolder(folder); folder = ParentOf(folder)) names_.folders.insert(folder);
  auto node = std::make_shared<Node>();
  node->bytes = node->synced = bytes;
  names_.files[key] = std::move(node);
}

void SimDisk::RemoveTree(const std::filesystem::path& folder) {
  const Key key = KeyOf(folder);
  const auto isGone = [&key](const Key& other) { return other == key || other.starts_with(key + "/"); };
  std::erase_if(names_.files, [&](const auto& file) { return isGone(file.first); });
  std::erase_if(names_.folders, isGone);
}

SimDisk::Key SimDisk::KeyOf(const std::filesystem::path& path) {
  Key key = ("/" / path).lexically_normal().generic_string();
  if (key.size() > 1 && key.back() == '/') key.pop_back();
  return key;
}

SimDisk::Key SimDisk::ParentOf(const Key& key) {
  const std::size_t slash = key.rfind('/');
  return slash == 0 ? "/" : key.substr(0, slash);
}

// One change of the disk that is made whole or not at all.
template <typename Change>
void SimDisk::Operate(std::error_code& error, Change change) {
  switch (NextFate()) {
    case Fate::Happens:
      change();
      return;
    case Fate::Fails:
      error = failure_;
      return;
    case Fate::Dies:
      if (random_.Chance(0.5)) change();
      Die();
  }
}

bool SimDisk::IsReadOnly(const Key& key) const {
  for (Key folder = key;; folder = ParentOf(folder)) {
    if (readOnly_.contains(folder)) return true;
    if (folder == "/") return false;
  }
}

bool SimDisk::IsEmptyFolder(const Key& key) const {
  const Key prefix = key + "/";
  const auto file = names_.files.lower_bound(prefix);
  const auto folder = names_.folders.lower_bound(prefix);
  return (file == names_.files.end() || !file->first.starts_with(prefix)) &&
         (folder == names_.folders.end() || !folder->starts_with(prefix));
}

std::shared_ptr<SimDisk::Node> SimDisk::FindFile(const Key& key) const {
  const auto found = names_.files.find(key);
  return found == names_.files.end() ? nullptr : found->second;
}

// The names, of which this operation changes some.
SimDisk::Names& SimDisk::NamesToChange() {
  if (powerLoss_) unsyncedNames_.push_back(names_);
  return names_;
}

void SimDisk::WriteNode(Node& node, std::uint64_t position, std::string_view bytes, std::error_code& error) {
  const Fate fate = NextFate();
  if (fate != Fate::Happens) bytes = bytes.substr(0, random_.Below(bytes.size() + 1));
  const std::size_t room = RoomFor(node, position, bytes.size());
  if (room > 0) ChangeNode(node, position, bytes.substr(0, room));
  if (fate == Fate::Dies) Die();
  if (room < bytes.size()) error = Error(std::errc::no_space_on_device);
  if (fate == Fate::Fails) error = failure_;
}

void SimDisk::ChangeNode(Node& node, std::uint64_t position, std::string_view bytes) {
  Node::Change change{position, std::string(bytes)};
  change.ApplyTo(node.bytes);
  if (powerLoss_) node.unsynced.push_back(std::move(change));
}

// How many of `size` bytes at `position` the disk still has room for.
std::size_t SimDisk::RoomFor(const Node& node, std::uint64_t position, std::size_t size) const {
  if (capacity_ == kUnlimited) return size;
  const std::uint64_t used = Used();
  const std::uint64_t free = capacity_ > used ? capacity_ - used : 0;
  const std::uint64_t last = std::max<std::uint64_t>(node.bytes.size(), position);
  const std::uint64_t hole = last - node.bytes.size();
  if (hole > free) return 0;
  const std::uint64_t withoutGrowth = last > position ? last - position : 0;
  if (size <= withoutGrowth) return size;
  return static_cast<std::size_t>(std::min<std::uint64_t>(size, withoutGrowth + (free - hole)));
}

void SimDisk::SyncNode(Node& node) {
  if (powerLoss_) node.synced = node.bytes;
  node.unsynced.clear();
  unsyncedNames_.clear();
}

}  // namespace tarvolt
