#include "check/checks.h"
#include "core/file_tools.h"

namespace gorbex {
namespace {

// A component of the group could be built: that is another remedy than an installation.
std::string NotBuilt(const CheckedReference::Use& use) {
  if (use.producer == nullptr) return {};
  return ", and the run does not build " + GetFileFromPath(use.producer->path);
}

}  // namespace

void LookForReferenceUnregistered(CheckedGroup& group, Findings& found) {
  for (const CheckedReference& reference : group.References()) {
    const auto uses = reference.UsesNotBuilt();
    if (uses.empty()) continue;
    if (reference.state == CheckedReference::State::Unregistered) {
      found.push_back(reference.FindingOn(
          uses, reference.name + " is not registered" + NotBuilt(*uses.front())));
    } else if (reference.state == CheckedReference::State::NoIdentity) {
      found.push_back(reference.FindingOn(uses, "the reference names no component"));
    }
  }
}

}  // namespace gorbex
