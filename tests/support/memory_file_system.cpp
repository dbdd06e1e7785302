#include "tests/support/memory_file_system.h"

#include <algorithm>
#include <optional>

#include "platform/code_page.h"

namespace gorbex::test {
namespace {

bool IsPossible(const std::string& path) {
  const std::size_t behindDrive = path.size() >= 2 && path[1] == ':' ? 2 : 0;
  return !path.empty() && std::all_of(path.begin() + static_cast<std::ptrdiff_t>(behindDrive),
                                      path.end(), [](char c) {
                                        return static_cast<unsigned char>(c) >= 0x20 &&
                                               std::string("*?\"<>|:").find(c) == std::string::npos;
                                      });
}

// The path from its drive on, "." and ".." resolved: relative paths lie on "C:\".
std::string Normalised(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  const bool isShare = path.starts_with("\\\\");
  std::string whole = isShare ? "\\" : "C:";
  if (path.size() >= 2 && path[1] == ':') {
    whole = UpperCase(path.substr(0, 2));
    path.erase(0, 2);
  }
  const auto top = whole.size();
  while (!path.empty()) {
    const auto name = path.substr(0, path.find('\\'));
    path.erase(0, name.size() + 1);
    if (name == ".." && whole.size() > top) whole.erase(whole.rfind('\\'));
    if (!name.empty() && name != "." && name != "..") whole += "\\" + name;
  }
  return whole;
}

std::string Key(const std::string& path) {
  return LowerCase(Normalised(path));
}

std::string FolderOf(const std::string& normalised) {
  const auto end = normalised.rfind('\\');
  return end == std::string::npos ? std::string() : normalised.substr(0, end);
}

std::string NameOf(const std::string& normalised) {
  return normalised.substr(normalised.rfind('\\') + 1);
}

}  // namespace

MemoryFileSystem::MemoryFileSystem(Journal& journal, const ManualClock& clock)
    : journal_(journal), clock_(clock) {
  AddFolder("C:\\");
}

void MemoryFileSystem::AddFile(const std::string& path, const std::string& bytes,
                               std::uint32_t attributes) {
  const auto whole = Normalised(path);
  AddFolder(FolderOf(whole));
  auto& node = nodes_[LowerCase(whole)];
  node = {NameOf(whole), {false, attributes, bytes.size(), clock_.fileTime}, bytes};
}

void MemoryFileSystem::AddFolder(const std::string& path) {
  const auto whole = Normalised(path);
  if (nodes_.contains(LowerCase(whole))) return;
  if (whole.find('\\') != std::string::npos) AddFolder(FolderOf(whole));
  nodes_[LowerCase(whole)] = {NameOf(whole), {true, 0, 0, clock_.fileTime}, {}};
}

void MemoryFileSystem::SetLastWrite(const std::string& path, FileTime time) {
  nodes_.at(Key(path)).info.lastWrite = time;
}

void MemoryFileSystem::Fail(FileOperation operation, const std::string& path, ErrorNumber number,
                            int times) {
  faults_.insert_or_assign({operation, Key(path)}, Fault{number, times});
}

void MemoryFileSystem::RaiseInjected(FileOperation operation, const std::string& path) const {
  const auto fault = faults_.find({operation, Key(path)});
  if (fault == faults_.end() || fault->second.times <= 0) return;
  --fault->second.times;
  throw RuntimeError(fault->second.number, path);
}

const MemoryFileSystem::Node* MemoryFileSystem::Find(const std::string& path) const {
  if (!IsPossible(path)) return nullptr;
  const auto found = nodes_.find(Key(path));
  return found == nodes_.end() ? nullptr : &found->second;
}

const MemoryFileSystem::Node& MemoryFileSystem::Existing(const std::string& path,
                                                         ErrorNumber whenAbsent) const {
  const auto* node = Find(path);
  if (node == nullptr) throw RuntimeError(whenAbsent, path);
  return *node;
}

void MemoryFileSystem::RequireFolderAbove(const std::string& path) const {
  if (!IsPossible(path)) throw RuntimeError(ErrorNumber::BadFileName, path);
  const auto* folder = Find(FolderOf(Normalised(path)));
  if (folder == nullptr || !folder->info.isFolder) {
    throw RuntimeError(ErrorNumber::PathNotFound, path);
  }
}

std::string MemoryFileSystem::Text(const std::string& path) const {
  const auto* node = Find(path);
  return node != nullptr && !node->info.isFolder ? node->bytes : "<absent>";
}

std::optional<FileInfo> MemoryFileSystem::Look(const std::string& path) const {
  const auto* node = Find(path);
  if (node == nullptr) return std::nullopt;
  return node->info;
}

std::string MemoryFileSystem::Read(const std::string& path) const {
  RaiseInjected(FileOperation::Read, path);
  if (Find(path) == nullptr) RequireFolderAbove(path);
  const auto& node = Existing(path, ErrorNumber::FileNotFound);
  if (node.info.isFolder) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  return node.bytes;
}

std::vector<FolderEntry> MemoryFileSystem::List(const std::string& folder) const {
  RaiseInjected(FileOperation::List, folder);
  if (!Existing(folder, ErrorNumber::PathNotFound).info.isFolder) {
    throw RuntimeError(ErrorNumber::PathNotFound, folder);
  }
  std::vector<FolderEntry> entries;
  for (const auto& [key, node] : nodes_) {
    if (key.find('\\') != std::string::npos && FolderOf(key) == Key(folder)) {
      entries.push_back({node.name, node.info.isFolder});
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const auto& a, const auto& b) { return UpperCase(a.name) < UpperCase(b.name); });
  return entries;
}

MemoryFileSystem::Node& MemoryFileSystem::Writable(const std::string& path) {
  RequireFolderAbove(path);
  const auto [found, isNew] = nodes_.try_emplace(Key(path));
  auto& node = found->second;
  if (isNew) {
    node.name = NameOf(Normalised(path));
    node.info.attributes = file_attribute::kArchive;
  }
  const bool isReadOnly = (node.info.attributes & file_attribute::kReadOnly) != 0;
  if (node.info.isFolder || isReadOnly) throw RuntimeError(ErrorNumber::PathFileAccess, path);
  return node;
}

void MemoryFileSystem::Touch(Node& node) const {
  node.info.size = node.bytes.size();
  node.info.lastWrite = clock_.fileTime;
}

void MemoryFileSystem::Write(const std::string& path, const std::string& bytes) {
  RaiseInjected(FileOperation::Write, path);
  auto& node = Writable(path);
  node.bytes = bytes;
  Touch(node);
  journal_.push_back("write " + path);
}

void MemoryFileSystem::Append(const std::string& path, const std::string& bytes) {
  RaiseInjected(FileOperation::Append, path);
  auto& node = Writable(path);
  node.bytes += bytes;
  Touch(node);
  journal_.push_back("append " + path);
}

void MemoryFileSystem::Remove(const std::string& path) {
  RaiseInjected(FileOperation::Remove, path);
  Existing(path, ErrorNumber::FileNotFound);
  Writable(path);
  nodes_.erase(Key(path));
  journal_.push_back("remove " + path);
}

void MemoryFileSystem::SetAttributes(const std::string& path, std::uint32_t attributes) {
  RaiseInjected(FileOperation::SetAttributes, path);
  Existing(path, ErrorNumber::FileNotFound);
  auto& node = nodes_.at(Key(path));
  if (!node.info.isFolder) node.info.attributes = attributes;
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
