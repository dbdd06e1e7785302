#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/runtime_error.h"
#include "tests/support/journal.h"

namespace gorbex::test {

enum class FileOperation { Read, Write, CreateFolder };

/// Files in memory with the rules of the real ones, all last written on 1 March 1601. Journals
/// "write PATH", "append PATH", "remove PATH", "attributes PATH NUMBER" and "mkdir PATH", with the
/// path as it was given.
class MemoryFileSystem : public FileSystem {
 public:
  explicit MemoryFileSystem(Journal& journal) : journal_(journal) { AddFolder("C:\\"); }

  /// Puts a file there, with its folders, without a line in the journal.
  void AddFile(const std::string& path, const std::string& bytes,
               std::uint32_t attributes = file_attribute::kArchive);
  void AddFolder(const std::string& path);

  /// Lets the next operation of that kind on the path fail.
  void Fail(FileOperation operation, const std::string& path, ErrorNumber number);

  /// The contents of a file, "<absent>" when there is none.
  [[nodiscard]] std::string Text(const std::string& path) const;

  [[nodiscard]] std::optional<FileInfo> Look(const std::string& path) const override;
  [[nodiscard]] std::string Read(const std::string& path) const override;
  [[nodiscard]] std::vector<FolderEntry> List(const std::string& folder) const override;
  void Write(const std::string& path, const std::string& bytes) override;
  void Append(const std::string& path, const std::string& bytes) override;
  void Remove(const std::string& path) override;
  void SetAttributes(const std::string& path, std::uint32_t attributes) override;
  void CreateFolder(const std::string& path) override;

 private:
  struct Node {
    std::string name;  ///< last component as first written
    bool isFolder = false;
    std::uint32_t attributes = file_attribute::kArchive;
    std::string bytes{};
  };

  [[nodiscard]] const Node* Find(const std::string& path) const;
  void RequireFile(const std::string& path) const;
  void RequireFolderAbove(const std::string& path) const;
  void RaiseInjected(FileOperation operation, const std::string& path) const;
  Node& Writable(const std::string& path);

  Journal& journal_;
  std::map<std::string, Node> nodes_;  ///< by normalised lower-case path
  mutable std::map<std::pair<FileOperation, std::string>, ErrorNumber> faults_;
};

}  // namespace gorbex::test
