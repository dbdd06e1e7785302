#pragma once

#include <deque>
#include <string>
#include <vector>

#include "tests/support/memory_platform.h"

namespace gorbex::test {

class Group;

/// One project of a group; its file follows every call.
class GroupProject {
 public:
  GroupProject(Group& group, const std::string& name, const std::string& type,
               const std::string& extension);

  [[nodiscard]] std::string Path() const;                              ///< "C:\Group\Core\Core.vbp"
  [[nodiscard]] const std::string& Binary() const { return binary_; }  ///< "C:\Group\Bin\Core.dll"
  [[nodiscard]] std::string Guid() const;  ///< of its type library, made from its name

  /// A reference to the binary of another project of the group, which may be added later.
  GroupProject& Uses(const std::string& library);

  /// A line as given, CR LF added.
  GroupProject& Line(const std::string& line);

  /// The binary lies in the build folder.
  GroupProject& Built();

 private:
  friend class Group;

  Group& group_;
  std::string name_;
  std::string binary_;
  std::string lines_;
  std::string dependency_;  ///< of the queue row
};

/// A group of projects below "C:\Group", building into "C:\Group\Bin", in a memory platform.
class Group {
 public:
  explicit Group(MemoryPlatform& platform) : platform_(platform) {}

  GroupProject& Library(const std::string& name) { return Add(name, "OleDll", ".dll"); }
  GroupProject& Executable(const std::string& name) { return Add(name, "Exe", ".exe"); }

  /// The path of a project by its name, whether it was added or not.
  [[nodiscard]] static std::string Path(const std::string& name);

  /// Writes "C:\Group\Group.bpf": every project, every project queued and checked in the order
  /// they were added, the build folder, then the lines given. Gives its path.
  std::string BuildProject(const std::vector<std::string>& lines = {}) const;

 private:
  friend class GroupProject;
  GroupProject& Add(const std::string& name, const std::string& type, const std::string& extension);

  MemoryPlatform& platform_;
  std::deque<GroupProject> projects_;
};

}  // namespace gorbex::test
