#include "check/checks.h"

namespace gorbex {

void LookForOnly64Bit(CheckedGroup& group, Findings& found) {
  for (const CheckedReference& reference : group.References()) {
    const auto uses = reference.UsesNotBuilt();
    if (reference.state != CheckedReference::State::Only64Bit || uses.empty()) continue;
    found.push_back(
        reference.FindingOn(uses, reference.name + " is registered for 64-bit programs only"));
  }
}

}  // namespace gorbex
