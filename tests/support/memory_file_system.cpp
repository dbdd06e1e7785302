#include "tests/support/memory_file_system.h"

#include <algorithm>
#include <sstream>

#include "platform/code_page.h"

namespace gorbex::test {
namespace {

constexpr FileTime kLastWrite{59ULL * 86'400 * 10'000'000};

bool IsPossible(const std::string& path) {
  const std::size_t behindDrive = path.size() >= 2 && path[1] == ':' ? 2 : 0;
  const std::string forbidden("*?\"<>|:\0", 8);
  return !path.empty() && path.find_first_of(forbidden, behindDrive) == std::string::npos;
}

// The path from its drive on, "." and ".." resolved; without a drive it lies on "C:".
std::string Normalised(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  std::string whole = "C:";
  if (path.size() >= 2 && path[1] == ':') {
    whole = UpperCase(path.substr(0, 2));
    path.erase(0, 2);
  }
  std::istringstream names(path);
  for (std::string name; std::getline(names, name, '\\');) {
    if (name == ".." && whole.size() > 2) whole.erase(whole.rfind('\\'));
    if (!name.empty() && name != "." && name != "..") whole += "\\" + name;
  }
  return whole;
}

std::string Key(const std::string& path) {
  return LowerCase(Normalised(path));
}

// A drive is its own folder.
std::string FolderOf(const std::string& normalised) {
  return normalised.substr(0, normalised.rfind('\\'));
}

std::string NameOf(const std::string& normalised) {
  return normalised.substr(normalised.rfind('\\') + 1);
}

}  // namespace

void MemoryFileSystem::AddFile(const std::string& path, const std::string& bytes,
                               std::uint32_t attributes) {
  const auto whole = Normalised(path);
  AddFolder(FolderOf(whole));
  nodes_[LowerCase(whole)] = {NameOf(whole), false, attributes, bytes};
}

void MemoryFileSystem::AddFolder(const std::string& path) {
  const auto whole = Normalised(path);
  const auto isNew = nodes_.try_emplace(LowerCase(whole), Node{NameOf(whole), true, 0}).second;
  if (isNew) AddFolder(FolderOf(whole));
}

void MemoryFileSystem::Fail(FileOperation operation, const std::string& path, ErrorNumber number) {
  faults_.insert_or_assign({operation, Key(path)}, number);
}

void MemoryFileSystem::RaiseInjected(FileOperation operation, const std::string& path) const {
  const auto fault = faults_.extract({operation, Key(path)});
  if (!fault.empty()) throw RuntimeError(fault.mapped(), path);
}

const MemoryFileSystem::Node* MemoryFileSystem::Find(const std::string& path) const {
  const auto found = nodes_.find(Key(path));
  return !IsPossible(path) || found == nodes_.end() ? nullptr : &found->second;
}

void MemoryFileSystem::RequireFolderAbove(const std::string& path) const {
  if (!IsPossible(path)) throw RuntimeError(ErrorNumber::BadFileName, path);
  const auto* folder = Find(FolderOf(Normalised(path)));
  if (folder == nullptr || !folder->isFolder) throw RuntimeError(ErrorNumber::PathNotFound, path);
}

void MemoryFileSystem::RequireFile(const std::string& path) const {
  RequireFolderAbove(path);
  if (Find(path) == nullptr) throw RuntimeError(ErrorNumber::FileNotFound, path);
}

std::string MemoryFileSystem::Text(const std::string& path) const {
  const auto* node = Find(path);
  return node != nullptr && !node->isFolder ? node->bytes : "<absent>";
}

std::optional<FileInfo> MemoryFileSystem::Look(const std::string& path) const {
  const auto* node = Find(path);
  if (node == nullptr) return std::nullopt;
  return FileInfo{node->isFolder, node->attributes, node->bytes.size(), kLastWrite};
}

std::string MemoryFileSystem::Read(const std::string& path) const {
  RaiseInjected(FileOperation::Read, path);
  RequireFile(path);
  const auto* node = Find(path);
  if (node->isFolder) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  return node->bytes;
}

std::vector<FolderEntry> MemoryFileSystem::List(const std::string& folder) const {
  if (!FolderExists(*this, folder)) throw RuntimeError(ErrorNumber::PathNotFound, folder);
  std::vector<FolderEntry> entries;
  for (const auto& [key, node] : nodes_) {
    if (key != Key(folder) && FolderOf(key) == Key(folder)) {
      entries.push_back({node.name, node.isFolder});
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const auto& a, const auto& b) { return UpperCase(a.name) < UpperCase(b.name); });
  return entries;
}

MemoryFileSystem::Node& MemoryFileSystem::Writable(const std::string& path) {
  RequireFolderAbove(path);
  Node& node = nodes_.try_emplace(Key(path), Node{NameOf(Normalised(path))}).first->second;
  const bool isReadOnly = (node.attributes & file_attribute::kReadOnly) != 0;
  if (node.isFolder || isReadOnly) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  return node;
}

void MemoryFileSystem::Write(const std::string& path, const std::string& bytes) {
  RaiseInjected(FileOperation::Write, path);
  Writable(path).bytes = bytes;
  journal_.push_back("write " + path);
}

void MemoryFileSystem::Append(const std::string& path, const std::string& bytes) {
  Writable(path).bytes += bytes;
  journal_.push_back("append " + path);
}

void MemoryFileSystem::Remove(const std::string& path) {
  RequireFile(path);
  Writable(path);
  nodes_.erase(Key(path));
  journal_.push_back("remove " + path);
}

void MemoryFileSystem::SetAttributes(const std::string& path, std::uint32_t attributes) {
  RequireFile(path);
  nodes_.at(Key(path)).attributes = attributes;
  journal_.push_back("attributes " + path + " " + std::to_string(attributes));
}

void MemoryFileSystem::CreateFolder(const std::string& path) {
  RaiseInjected(FileOperation::CreateFolder, path);
  if (Find(path) != nullptr) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  RequireFolderAbove(path);
  AddFolder(path);
  journal_.push_back("mkdir " + path);
}

}  // namespace gorbex::test
