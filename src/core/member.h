#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/signal.h"

namespace gorbex {

/// The data of one Visual Basic project. Paths are Windows paths.
struct clsMember {
  bool BinaryCompat = false;
  std::vector<std::string> UserControls;  ///< file names of user controls and classes
  std::string VSSProject;                 ///< source-control spec, empty outside source control
  std::string Compatibility;              ///< the binary that compatibility is kept with
  std::string Version;
  std::string MemberType;
  std::string EXEName;    ///< file name of the built binary
  std::string BuildName;  ///< output folder, "\", EXEName, as the project file gives it
  std::string Name;
  std::string path;                  ///< full path of the .vbp file, the record's identity
  std::vector<std::string> Members;  ///< full paths of forms and modules
  std::vector<std::string> Refs;     ///< raw "reference" values, quotes removed
  std::vector<std::string> Objects;  ///< raw "object" values, quotes removed
};

/// The full path of the binary where the project itself has it built: in its output folder, or
/// beside the project file when it names none.
[[nodiscard]] std::string OwnBinary(const clsMember& project);

/// The records of the open build project in the order they were added, each under its .vbp path
/// exactly as given. Owns the records.
class MemberCollection {
 public:
  using Storage = std::vector<std::unique_ptr<clsMember>>;

  /// Error 457 when the path has a record.
  const clsMember& Add(clsMember member);

  /// Error 5 when the path has no record.
  void Remove(const std::string& path);
  void Clear();

  /// Replaces a text, in any letter case, in a record's references and objects. Error 5 when the
  /// path has no record.
  void ReplaceInReferences(const std::string& path, const std::string& oldText,
                           const std::string& newText);

  /// Takes compatibility and version, which a build can write, from a newly read record. Error 5
  /// when its path has no record here.
  void TakeBuildFacts(const clsMember& read);

  /// Null when the path has no record.
  [[nodiscard]] const clsMember* Find(const std::string& path) const;

  /// Error 5 when the path has no record.
  [[nodiscard]] const clsMember& Item(const std::string& path) const;

  [[nodiscard]] bool Contains(const std::string& path) const { return Find(path) != nullptr; }
  [[nodiscard]] std::size_t Count() const { return members_.size(); }
  [[nodiscard]] Storage::const_iterator begin() const { return members_.begin(); }
  [[nodiscard]] Storage::const_iterator end() const { return members_.end(); }

  Signal<clsMember> added;
  Signal<clsMember> removing;
  Signal<> cleared;

 private:
  Storage members_;
  std::unordered_map<std::string, clsMember*> byPath_;
};

}  // namespace gorbex
