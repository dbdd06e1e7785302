#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/runtime_error.h"
#include "tests/support/journal.h"
#include "tests/support/manual_clock.h"

namespace gorbex::test {

enum class FileOperation { Read, List, Write, Append, Remove, SetAttributes, CreateFolder };

/// Files in memory with the rules of the real ones. Journals "write PATH", "append PATH",
/// "remove PATH", "attributes PATH NUMBER" and "mkdir PATH", with the path as it was given.
class MemoryFileSystem : public FileSystem {
 public:
  MemoryFileSystem(Journal& journal, const ManualClock& clock);

  /// Puts a file there, with its folders, without a line in the journal.
  void AddFile(const std::string& path, const std::string& bytes,
               std::uint32_t attributes = file_attribute::kArchive);
  void AddFolder(const std::string& path);
  void SetLastWrite(const std::string& path, FileTime time);

  /// Lets the next so many operations of that kind on the path fail.
  void Fail(FileOperation operation, const std::string& path, ErrorNumber number, int times = 1);

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
    FileInfo info;
    std::string bytes;
  };
  struct Fault {
    ErrorNumber number;
    int times;
  };

  [[nodiscard]] const Node* Find(const std::string& path) const;
  const Node& Existing(const std::string& path, ErrorNumber whenAbsent) const;
  void RaiseInjected(FileOperation operation, const std::string& path) const;
  void RequireFolderAbove(const std::string& path) const;
  Node& Writable(const std::string& path);
  void Touch(Node& node) const;

  Journal& journal_;
  const ManualClock& clock_;
  std::map<std::string, Node> nodes_;  ///< by normalised lower-case path
  mutable std::map<std::pair<FileOperation, std::string>, Fault> faults_;
};

}  // namespace gorbex::test
