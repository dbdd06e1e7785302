#include "check/group_check.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "core/build_project_file.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {

Findings GroupCheck::Run(CheckedGroup::Scope scope, const CheckSelection& selection) const {
  scope.readsSources = !selection.isQuick;
  CheckedGroup group(uses_, std::move(scope));
  const auto order = [](const Finding& finding) {
    return std::make_tuple(LowerCase(finding.file), finding.line, LowerCase(finding.subject));
  };
  Findings all;
  for (const Check& check : AllChecks()) {
    if (!selection.Wants(check)) continue;
    const auto first = static_cast<std::ptrdiff_t>(all.size());
    check.look(group, all);
    for (auto each = all.begin() + first; each != all.end(); ++each) {
      each->id = check.id;
      each->severity = check.severity;
      each->remedy = check.remedy;
    }
    std::ranges::stable_sort(all.begin() + first, all.end(), {}, order);
  }
  return all;
}

// Also the projects that could not be loaded.
Findings GroupCheck::RunOpen(const CheckSelection& selection) const {
  const std::string& file = uses_.window.fileName;
  return Run({.file = file, .named = ProjectsNamedIn(uses_.files, file)}, selection);
}

std::size_t ErrorsIn(const Findings& findings) {
  return static_cast<std::size_t>(
      std::ranges::count(findings, Severity::Error, &Finding::severity));
}

std::string SummaryOf(const Findings& findings) {
  if (findings.empty()) return "No problem found";
  const auto errors = ErrorsIn(findings);
  return Counted(errors, "error", "errors") + ", " +
         Counted(findings.size() - errors, "warning", "warnings");
}

}  // namespace gorbex
