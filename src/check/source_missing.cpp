#include "check/by_folder.h"
#include "check/checks.h"

namespace gorbex {

void LookForSourceMissing(CheckedGroup& group, Findings& found) {
  ByFolder missing("sources are missing");
  for (const CheckedSource& source : group.Sources()) {
    if (source.state == CheckedSource::State::Sound) continue;
    const bool isMissing = source.state == CheckedSource::State::Missing;
    const auto& first = source.uses.front();
    Finding finding{.file = first.project->path, .line = first.line, .subject = source.path};
    for (const auto& use : source.uses) finding.Concern(use.project->path);
    finding.text.append(first.written);
    finding.text += isMissing ? " is missing" : " cannot be read: " + source.problem;
    finding.TellNumber("contain it");
    if (isMissing) {
      missing.Add(std::move(finding));
    } else {
      found.push_back(std::move(finding));
    }
  }
  missing.MoveTo(found);
}

}  // namespace gorbex
