#pragma once

#include <string>
#include <vector>

#include "check/checked_group.h"
#include "check/finding.h"

namespace gorbex {

/// A finding on a component, with the projects whose uses are given, at least one. The text is
/// completed by their number.
[[nodiscard]] inline Finding FindingOn(const CheckedReference& reference,
                                       const std::vector<const CheckedReference::Use*>& uses,
                                       const std::string& text) {
  Finding finding{.file = uses.front()->project->path,
                  .line = uses.front()->line,
                  .subject = reference.name,
                  .text = text};
  for (const auto* use : uses) {
    finding.Concern(use->project->path);
  }
  finding.TellNumber("use it");
  return finding;
}

}  // namespace gorbex
