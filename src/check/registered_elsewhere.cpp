#include "check/checks.h"
#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

// 32-bit programs find one of these folders under both names.
std::string Comparable(const std::string& path) {
  std::string text = LowerCase(path);
  ReplaceIgnoringCase(text, "\\syswow64\\", "\\system32\\");
  return text;
}

bool HoldTheSame(const FileReader& files, const std::string& one, const std::string& other) {
  const auto left = files.Look(one);
  const auto right = files.Look(other);
  if (!left || !right || left->size != right->size) return false;
  return ReadOrEmpty(files, one) == ReadOrEmpty(files, other);
}

// The file that a project means, where that can be told.
std::string MeantBy(const CheckedReference::Use& use) {
  if (use.producer != nullptr) return use.producer->output;
  if (use.file.find('\\') == std::string::npos) return {};
  return ResolvedPath(use.project->folder, use.file);
}

}  // namespace

// The compiler goes by the registry and ignores the path, so another path by itself does no harm.
// There is a doubt where both files exist and differ.
void LookForRegisteredElsewhere(CheckedGroup& group, Findings& found) {
  for (const CheckedReference& reference : group.References()) {
    if (reference.state != CheckedReference::State::Registered || !reference.isFileKnown) continue;
    const auto uses = reference.UsesNotBuilt();
    if (uses.empty()) continue;
    const std::string meant = MeantBy(*uses.front());
    if (meant.empty() || Comparable(meant) == Comparable(reference.registered)) continue;
    const DiskNames::Entry* entry = group.Disk().Find(meant);
    if (entry == nullptr || entry->isFolder) continue;
    if (HoldTheSame(group.Parts().files, meant, reference.registered)) continue;
    found.push_back(reference.FindingOn(
        uses, reference.name + " is registered as " + reference.registered +
                  ", and the project names " + meant + ", which differs from it"));
  }
}

}  // namespace gorbex
