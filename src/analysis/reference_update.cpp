#include "analysis/reference_update.h"

#include <algorithm>
#include <optional>

#include "core/list_columns.h"
#include "core/reference_value.h"
#include "core/text.h"

namespace gorbex {

bool ReferenceUpdate::UpdateProjectReferences(const std::string& projectKey) {
  bool isDone = false;
  Procedure(report_, ": frmBuilder.UpdateProjectReferences").Run([&](Procedure& on) {
    // Copies, since an error report lets other commands run that may change model and queue.
    const auto project =
        on([&] { return std::make_optional(window_.ProjectMembers.Item(projectKey)); });
    if (!project.has_value()) return;
    bool isWritten = true;
    std::vector<Change> changes;
    for (const std::string& earlier : ProjectsAbove(projectKey)) {
      isWritten = FollowProject(on, *project, earlier, changes) && isWritten;
    }
    for (const std::string& file : project->Members) {
      if (changes.empty()) break;
      isWritten =
          on([&] { return ReplaceAll(file, changes, &FileSystem::WriteUnsynced); }) && isWritten;
    }
    isDone = isWritten;
  });
  return isDone;
}

bool ReferenceUpdate::WouldChange(const std::string& projectKey) const {
  const clsMember* project = window_.ProjectMembers.Find(projectKey);
  if (project == nullptr) return false;
  const auto above = ProjectsAbove(projectKey);
  return std::any_of(above.begin(), above.end(), [&](const std::string& earlier) {
    const clsMember* built = window_.ProjectMembers.Find(earlier);
    if (built == nullptr || built->EXEName.empty()) return false;
    return std::any_of(project->Refs.begin(), project->Refs.end(), [&](const std::string& entry) {
      return ContainsIgnoringCase(entry, built->EXEName) &&
             RegisteredIdentity(ComponentFile(built->EXEName)) != GetGUID(entry);
    });
  });
}

std::vector<std::string> ReferenceUpdate::ComponentsWithoutIdentity(
    const std::string& projectKey, const IsComing& isComing) const {
  std::vector<std::string> missing;
  const clsMember* project = window_.ProjectMembers.Find(projectKey);
  if (project == nullptr) return missing;
  for (const std::string& earlier : ProjectsAbove(projectKey)) {
    const clsMember* built = isComing(earlier) ? nullptr : window_.ProjectMembers.Find(earlier);
    if (built == nullptr || built->EXEName.empty()) continue;
    const bool isUsed =
        std::any_of(project->Refs.begin(), project->Refs.end(), [&](const std::string& reference) {
          return ContainsIgnoringCase(reference, built->EXEName) && !GetGUID(reference).empty();
        });
    const std::string file = ComponentFile(built->EXEName);
    if (isUsed && RegisteredIdentity(file).empty()) missing.push_back(file);
  }
  return missing;
}

std::vector<std::string> ReferenceUpdate::ProjectsAbove(const std::string& projectKey) const {
  std::vector<std::string> above;
  for (const auto& row : window_.lvwQueue.Rows()) {
    if (row->SubItem(queue_column::kProject) == projectKey) break;
    above.push_back(row->SubItem(queue_column::kProject));
  }
  return above;
}

bool ReferenceUpdate::FollowProject(Procedure& on, const clsMember& project,
                                    const std::string& earlier, std::vector<Change>& changes) {
  const std::string exeName = on([&] { return window_.ProjectMembers.Item(earlier).EXEName; });
  if (exeName.empty()) return true;
  bool isWritten = true;
  for (const std::string& entry : project.Refs) {
    if (!ContainsIgnoringCase(entry, exeName)) continue;
    const std::string oldGuid(GetGUID(entry));
    const auto newGuid =
        on([&] { return std::make_optional(RegisteredIdentity(ComponentFile(exeName))); });
    if (!newGuid.has_value() || *newGuid == oldGuid) continue;
    changes.emplace_back(oldGuid, *newGuid);
    if (!on([&] { return ReplaceInFile(project.path, oldGuid, *newGuid); })) {
      isWritten = false;
      continue;
    }
    on([&] { display_.FollowFile(project.path, oldGuid, *newGuid); });
  }
  return isWritten;
}

std::string ReferenceUpdate::ComponentFile(const std::string& exeName) const {
  return window_.buildDirectory + exeName;
}

std::string ReferenceUpdate::RegisteredIdentity(const std::string& componentFile) const {
  constexpr std::string_view kNoInterface = "{00000000-0000-0000-0000-000000000000}";
  const std::string answer = components_.InterfaceGuid(componentFile, " ");
  if (answer.empty() || answer == kNoInterface) return {};
  return registry_.fnsGetRegistryValue("HKEY_CLASSES_ROOT\\Interface\\" + answer + "\\TypeLib", "");
}

bool ReferenceUpdate::ReplaceInFile(const std::string& file, std::string_view oldText,
                                    std::string_view newText) {
  return ReplaceAll(file, {{std::string(oldText), std::string(newText)}}, &FileSystem::Write);
}

// Makes the changes one after the other in the file's text, so that a change also finds what those
// before it wrote. The file is read once and written once.
bool ReferenceUpdate::ReplaceAll(const std::string& file, const std::vector<Change>& changes,
                                 Writing write) {
  bool isWritten = false;
  Procedure(report_, ": frmBuilder.ReplaceInFile").Run([&](Procedure& on) {
    // Without the file's text there is nothing to write back, so reading is not a separate
    // statement.
    on([&] {
      std::string text = files_.Read(file);
      for (const auto& [oldText, newText] : changes) {
        ReplaceIgnoringCase(text, oldText, newText);
      }
      const auto info = files_.Look(file);
      if (info && info->attributes != file_attribute::kNormal) {
        files_.SetAttributes(file, file_attribute::kArchive);
      }
      (files_.*write)(file, text);
      isWritten = true;
    });
  });
  return isWritten;
}

}  // namespace gorbex
