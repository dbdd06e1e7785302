#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/memory_platform.h"

namespace gorbex::test {

/// One project of a group; its file follows every call.
class GroupProject {
 public:
  GroupProject(MemoryPlatform& platform, std::deque<GroupProject>& group, const std::string& name,
               const std::string& type, const std::string& extension)
      : platform_(platform),
        group_(group),
        name_(name),
        binary_("C:\\Group\\Bin\\" + name + extension) {
    Line("Type=" + type).Line("ExeName32=\"" + name + extension + "\"");
    Line("Path32=\"C:\\Group\\Bin\"").Line("Name=\"" + name + "\"");
  }

  [[nodiscard]] std::string Path() const { return PathOf(name_); }     ///< "C:\Group\Core\Core.vbp"
  [[nodiscard]] const std::string& Binary() const { return binary_; }  ///< "C:\Group\Bin\Core.dll"
  [[nodiscard]] std::string Guid() const { return GuidOf(name_); }     ///< of its type library
  [[nodiscard]] const std::string& Dependency() const { return dependency_; }  ///< of its queue row

  [[nodiscard]] static std::string PathOf(const std::string& name) {
    return "C:\\Group\\" + name + "\\" + name + ".vbp";
  }
  [[nodiscard]] static std::string GuidOf(const std::string& name) {
    const auto hash = std::to_string(100'000'000 + std::hash<std::string>{}(name) % 100'000'000);
    return "{" + hash.substr(1) + "-0000-4000-8000-0000C0DEC0DE}";
  }

  /// A reference to the binary of another project of the group, which may be added later.
  GroupProject& Uses(const std::string& library) {
    std::string binary = "C:\\Group\\Bin\\" + library + ".dll";  // unless the group holds it
    for (const GroupProject& project : group_) {
      if (project.name_ == library) binary = project.binary_;
    }
    if (dependency_.empty()) dependency_ = PathOf(library);
    return Line("Reference=*\\G" + GuidOf(library) + "#1.0#0#" + binary + "#" + library);
  }

  /// A line as given, CR LF added.
  GroupProject& Line(const std::string& line) {
    lines_ += line + "\r\n";
    platform_.files.AddFile(Path(), lines_);
    return *this;
  }

  /// The binary lies in the build folder.
  GroupProject& Built() {
    platform_.files.AddFile(binary_, "MZ");
    return *this;
  }

 private:
  MemoryPlatform& platform_;
  std::deque<GroupProject>& group_;
  std::string name_;
  std::string binary_;
  std::string lines_;
  std::string dependency_;
};

/// A group of projects below "C:\Group", building into "C:\Group\Bin", in a memory platform.
class Group {
 public:
  explicit Group(MemoryPlatform& platform) : platform_(platform) {}

  GroupProject& Library(const std::string& name) { return Add(name, "OleDll", ".dll"); }
  GroupProject& Executable(const std::string& name) { return Add(name, "Exe", ".exe"); }

  /// The path of a project by its name, whether it was added or not.
  [[nodiscard]] static std::string Path(const std::string& name) {
    return GroupProject::PathOf(name);
  }

  /// Writes "C:\Group\Group.bpf": every project, every project queued and checked in the order
  /// they were added, the build folder, then the lines given. Gives its path.
  std::string BuildProject(const std::vector<std::string>& lines = {}) const {
    std::string text;
    for (const auto& project : projects_) text += "project=" + project.Path() + "\r\n";
    for (const auto& project : projects_) {
      text += "queue=*" + project.Path() + "," + project.Dependency() + "\r\n";
    }
    text += "builddir=C:\\Group\\Bin\r\n";
    for (const std::string& line : lines) text += line + "\r\n";
    platform_.files.AddFile("C:\\Group\\Group.bpf", text);
    return "C:\\Group\\Group.bpf";
  }

 private:
  GroupProject& Add(const std::string& name, const std::string& type,
                    const std::string& extension) {
    platform_.files.AddFolder("C:\\Group\\Bin");
    return projects_.emplace_back(platform_, projects_, name, type, extension);
  }

  MemoryPlatform& platform_;
  std::deque<GroupProject> projects_;
};

}  // namespace gorbex::test
