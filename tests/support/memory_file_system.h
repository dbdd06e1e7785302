#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/file_system.h"
#include "platform/runtime_error.h"
#include "tests/support/journal.h"

namespace gorbex::test {

enum class FileOperation { Read, Write, CreateFolder, Other };

/// Files in memory with the rules of the real ones, all last written on 1 March 1601. Journals
/// "write PATH", "append PATH", "remove PATH", "attributes PATH NUMBER" and "mkdir PATH", with the
/// path as it was given.
class MemoryFileSystem : public FileSystem {
 public:
  explicit MemoryFileSystem(Journal& journal) : journal_(journal) { AddFolder("C:\\"); }

  /// Asked by each operation, which fails with the error that it gives, if any.
  std::function<std::optional<ErrorNumber>()> fails;

  /// The name of a file that is listed beside another one where only letter case tells them apart.
  std::string twin;

  /// Puts a file there, with its folders, without a line in the journal.
  void AddFile(const std::string& path, const std::string& bytes,
               std::uint32_t attributes = file_attribute::kArchive) {
    const auto whole = Normalised(path);
    AddFolder(FolderOf(whole));
    nodes_[LowerCase(whole)] = {NameOf(whole), false, attributes, bytes, ++changes_};
  }
  void AddFolder(const std::string& path, std::uint32_t attributes = 0) {
    const auto whole = Normalised(path);
    const Node folder{NameOf(whole), true, attributes};
    const auto isNew = nodes_.try_emplace(LowerCase(whole), folder).second;
    if (isNew) AddFolder(FolderOf(whole));
  }

  /// Lets the next operation of that kind on the path fail.
  void Fail(FileOperation operation, const std::string& path, ErrorNumber number) {
    faults_.insert_or_assign({operation, Key(path)}, number);
  }

  /// The contents of a file, "<absent>" when there is none.
  [[nodiscard]] std::string Text(const std::string& path) const {
    const auto* node = Find(path);
    return node != nullptr && !node->isFolder ? node->bytes : "<absent>";
  }

  [[nodiscard]] std::optional<FileInfo> Look(const std::string& path) const override {
    constexpr FileTime kLastWrite{59ULL * 86'400 * 10'000'000};
    const auto* node = fails && fails() ? nullptr : Find(path);
    if (node == nullptr) return std::nullopt;
    return FileInfo{node->isFolder, node->attributes, node->bytes.size(), kLastWrite,
                    node->identity};
  }
  [[nodiscard]] std::string Read(const std::string& path) const override {
    RaiseInjected(path, FileOperation::Read);
    RequireFile(path);
    const auto* node = Find(path);
    if (node->isFolder) throw RuntimeError(ErrorNumber::PathFileAccess, path);
    return node->bytes;
  }
  [[nodiscard]] std::vector<FolderEntry> List(const std::string& folder) const override {
    RaiseInjected(folder);
    const auto* node = Find(folder);
    if (node == nullptr || !node->isFolder) throw RuntimeError(ErrorNumber::PathNotFound, folder);
    std::vector<FolderEntry> entries;
    for (const auto& [key, below] : nodes_) {
      if (key != Key(folder) && FolderOf(key) == Key(folder)) {
        entries.push_back({below.name, below.isFolder});
        if (EqualsIgnoringCase(below.name, twin)) entries.push_back({twin});
      }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
      return UpperCase(a.name) < UpperCase(b.name);
    });
    return entries;
  }
  void Write(const std::string& path, const std::string& bytes) override {
    RaiseInjected(path, FileOperation::Write);
    Writable(path).bytes = bytes;
    journal_.push_back("write " + path);
  }
  void Append(const std::string& path, const std::string& bytes) override {
    RaiseInjected(path);
    Writable(path).bytes += bytes;
    journal_.push_back("append " + path);
  }
  void Remove(const std::string& path) override {
    RaiseInjected(path);
    RequireFile(path);
    Writable(path);
    nodes_.erase(Key(path));
    journal_.push_back("remove " + path);
  }
  void SetAttributes(const std::string& path, std::uint32_t attributes) override {
    RaiseInjected(path);
    RequireFile(path);
    nodes_.at(Key(path)).attributes = attributes;
    journal_.push_back("attributes " + path + " " + std::to_string(attributes));
  }
  void CreateFolder(const std::string& path) override {
    RaiseInjected(path, FileOperation::CreateFolder);
    if (Find(path) != nullptr) throw RuntimeError(ErrorNumber::PathFileAccess, path);
    RequireFolderAbove(path);
    AddFolder(path);
    journal_.push_back("mkdir " + path);
  }

 private:
  struct Node {
    std::string name;  ///< last component as first written
    bool isFolder = false;
    std::uint32_t attributes = file_attribute::kArchive;
    std::string bytes{};
    std::uint64_t identity = 0;  ///< another one after each change
  };

  static bool IsPossible(const std::string& path) {
    const std::size_t behindDrive = path.size() >= 2 && path[1] == ':' ? 2 : 0;
    const std::string forbidden("*?\"<>|:\0", 8);
    return !path.empty() && path.find_first_of(forbidden, behindDrive) == std::string::npos;
  }

  // The path from its drive on, "." and ".." resolved; without a drive it lies on "C:".
  static std::string Normalised(std::string path) {
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

  static std::string Key(const std::string& path) { return LowerCase(Normalised(path)); }

  // A drive is its own folder.
  static std::string FolderOf(const std::string& normalised) {
    return normalised.substr(0, normalised.rfind('\\'));
  }
  static std::string NameOf(const std::string& normalised) {
    return normalised.substr(normalised.rfind('\\') + 1);
  }

  void RaiseInjected(const std::string& path, FileOperation kind = FileOperation::Other) const {
    if (const auto error = fails ? fails() : std::nullopt) throw RuntimeError(*error, path);
    const auto fault = faults_.extract({kind, Key(path)});
    if (!fault.empty()) throw RuntimeError(fault.mapped(), path);
  }

  [[nodiscard]] const Node* Find(const std::string& path) const {
    const auto found = nodes_.find(Key(path));
    return !IsPossible(path) || found == nodes_.end() ? nullptr : &found->second;
  }
  void RequireFolderAbove(const std::string& path) const {
    if (!IsPossible(path)) throw RuntimeError(ErrorNumber::BadFileName, path);
    const auto* folder = Find(FolderOf(Normalised(path)));
    if (folder == nullptr || !folder->isFolder) throw RuntimeError(ErrorNumber::PathNotFound, path);
  }
  void RequireFile(const std::string& path) const {
    RequireFolderAbove(path);
    if (Find(path) == nullptr) throw RuntimeError(ErrorNumber::FileNotFound, path);
  }
  Node& Writable(const std::string& path) {
    RequireFolderAbove(path);
    Node& node = nodes_.try_emplace(Key(path), Node{NameOf(Normalised(path))}).first->second;
    const bool isReadOnly = (node.attributes & file_attribute::kReadOnly) != 0;
    if (node.isFolder || isReadOnly) throw RuntimeError(ErrorNumber::PathFileAccess, path);
    node.identity = ++changes_;
    return node;
  }

  Journal& journal_;
  std::uint64_t changes_ = 0;
  std::map<std::string, Node> nodes_;  ///< by normalised lower-case path
  mutable std::map<std::pair<FileOperation, std::string>, ErrorNumber> faults_;
};

}  // namespace gorbex::test
