#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/project_display.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "core/registry_tools.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// Repoints the references of a project to the components that were built before it.
class ReferenceUpdate {
 public:
  ReferenceUpdate(frmBuilder& window, FileSystem& files, const RegistryTools& registry,
                  const ComponentInspector& components, ProjectDisplay& display,
                  ErrorReport& report)
      : window_(window),
        files_(files),
        registry_(registry),
        components_(components),
        display_(display),
        report_(report) {}

  /// Writes the identities that are registered now for the components of the projects above this
  /// one in the queue into the project's file, forms and modules, in place of the old ones. An
  /// identity that cannot be read is written as an empty one. The project's record and its branch
  /// of the tree change with its file. False when a file could not be rewritten.
  bool UpdateProjectReferences(const std::string& projectKey);

  /// Whether an update would change the project's references now.
  [[nodiscard]] bool WouldChange(const std::string& projectKey) const;

  using IsComing = std::function<bool(const std::string& projectKey)>;

  /// The component files of projects above that have no identity: an update would leave the
  /// project's references to them empty. A project that is built before, as `isComing` tells,
  /// counts as if its component had an identity.
  [[nodiscard]] std::vector<std::string> ComponentsWithoutIdentity(const std::string& projectKey,
                                                                   const IsComing& isComing) const;

  /// Replaces every occurrence of a text, in any letter case, in one pass. Clears the file's
  /// attributes before it is written back. False when the file could not be rewritten.
  bool ReplaceInFile(const std::string& file, std::string_view oldText, std::string_view newText);

 private:
  using Change = std::pair<std::string, std::string>;  ///< old and new identity

  using Writing = void (FileSystem::*)(const std::string& path, const std::string& bytes);

  bool ReplaceAll(const std::string& file, const std::vector<Change>& changes, Writing write);
  [[nodiscard]] std::vector<std::string> ProjectsAbove(const std::string& projectKey) const;
  bool FollowProject(Procedure& on, const clsMember& project, const std::string& earlier,
                     std::vector<Change>& changes);
  [[nodiscard]] std::string ComponentFile(const std::string& exeName) const;
  [[nodiscard]] std::string RegisteredIdentity(const std::string& componentFile) const;

  frmBuilder& window_;
  FileSystem& files_;
  const RegistryTools& registry_;
  const ComponentInspector& components_;
  ProjectDisplay& display_;
  ErrorReport& report_;
};

}  // namespace gorbex
