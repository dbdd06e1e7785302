#pragma once

#include <string>
#include <vector>

#include "check/checked_group.h"
#include "check/finding.h"

namespace gorbex {

/// A finding about a component and the projects of these uses, at least one. Their number is added
/// to the text.
[[nodiscard]] inline Finding FindingOn(const CheckedReference& reference,
                                       const std::vector<const CheckedReference::Use*>& uses,
                                       const std::string& text) {
  Finding finding{.file = uses.front()->project->path,
                  .line = uses.front()->line,
                  .subject = reference.name,
                  .text = text};
  for (const auto* use : uses) finding.Concern(use->project->path);
  finding.TellNumber("use it");
  return finding;
}

}  // namespace gorbex
