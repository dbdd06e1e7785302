#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/dependency_graph.h"
#include "analysis/group_dependency.h"
#include "analysis/reference_update.h"
#include "check/checked_references.h"
#include "check/checked_sources.h"
#include "check/disk_names.h"
#include "check/project_lines.h"
#include "core/main_window.h"
#include "core/member.h"
#include "core/options.h"
#include "core/registry_tools.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// A project as its file has it now. Line ends that the compiler cannot read do not matter here, so
/// that they hide nothing else.
struct CheckedProject {
  std::string path;
  std::string folder;
  std::string text;                  ///< of the file
  std::vector<ProjectLine> lines{};  ///< views into the text
  const clsMember* record = nullptr;
  std::string output{};  ///< the full path of the file that a build writes
  std::size_t row = 0;   ///< in the queue, from 1; 0 outside
  bool isBuilt = false;  ///< by the run

  /// Null when the project file does not have the key.
  [[nodiscard]] const ProjectLine* Line(std::string_view key) const;
  [[nodiscard]] std::string_view Value(std::string_view key) const;  ///< empty for none

  /// Whether others can use what it builds.
  [[nodiscard]] bool IsComponent() const;
};

/// All that the checks look at: the open build project, its projects read again, and what is on
/// disk and in the registry, each looked up once.
class CheckedGroup {
 public:
  struct Uses {
    const frmBuilder& window;
    const clsOptions& options;
    const FileReader& files;
    const RegistryTools& registry;
    const ComponentInspector& components;
    const ReferenceUpdate& references;
  };

  struct Scope {
    std::string file;                ///< build project, group file or folder; empty for none
    std::vector<std::string> named;  ///< project files that the file names, as far as known
    bool hasQueue = true;            ///< the order of the queue is meant; else all is built
    bool readsSources = true;
  };

  CheckedGroup(const Uses& uses, Scope scope);
  CheckedGroup(const CheckedGroup&) = delete;
  CheckedGroup& operator=(const CheckedGroup&) = delete;

  [[nodiscard]] const Uses& Parts() const { return uses_; }
  [[nodiscard]] const std::string& File() const { return scope_.file; }

  /// The projects, in the order of Graph().
  [[nodiscard]] const std::deque<CheckedProject>& Projects() const { return projects_; }

  struct Unread {
    std::string path;
    std::string reason;
    bool hasImpossibleName = false;
  };
  [[nodiscard]] const std::vector<Unread>& UnreadProjects() const { return unread_; }

  [[nodiscard]] bool HasQueue() const { return scope_.hasQueue; }
  [[nodiscard]] const DependencyGraph& Graph();
  [[nodiscard]] const std::vector<CheckedReference>& References();
  [[nodiscard]] const std::deque<CheckedSource>& Sources();
  [[nodiscard]] DiskNames& Disk() { return disk_; }

  /// The project that builds a component, other than the one that names it; null for none.
  [[nodiscard]] const CheckedProject* ProducerOf(std::string_view component,
                                                 const std::string& user) const;

 private:
  void Read(const std::string& path);
  void TakeUnread(const std::string& path);
  void TakeQueue();

  Uses uses_;
  Scope scope_;
  MemberCollection members_;
  GroupDependency group_{members_};
  std::deque<CheckedProject> projects_;
  std::unordered_map<const clsMember*, const CheckedProject*> byRecord_;
  std::vector<Unread> unread_;
  DiskNames disk_;
  std::optional<DependencyGraph> graph_;
  std::optional<std::vector<CheckedReference>> references_;
  std::optional<std::deque<CheckedSource>> sources_;
};

}  // namespace gorbex
