#include "check/group_check.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "check/wording.h"
#include "core/pair_reader.h"
#include "platform/code_page.h"

namespace gorbex {

Findings FindingsOf(CheckedGroup& group, const CheckSelection& selection) {
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
    std::stable_sort(all.begin() + first, all.end(), [](const Finding& a, const Finding& b) {
      return std::make_tuple(LowerCase(a.file), a.line, LowerCase(a.subject)) <
             std::make_tuple(LowerCase(b.file), b.line, LowerCase(b.subject));
    });
  }
  return all;
}

Findings GroupCheck::Run(CheckedGroup::Scope scope, const CheckSelection& selection) const {
  scope.readsSources = !selection.isQuick;
  CheckedGroup group(uses_, std::move(scope));
  return FindingsOf(group, selection);
}

Findings GroupCheck::RunOpen(const CheckSelection& selection) const {
  CheckedGroup::Scope scope;
  scope.file = uses_.window.fileName;
  scope.named = NamedProjects();
  return Run(std::move(scope), selection);
}

// Also those that could not be loaded.
std::vector<std::string> GroupCheck::NamedProjects() const {
  std::vector<std::string> named;
  if (uses_.window.fileName.empty()) return named;
  try {
    const std::string text = uses_.files.Read(uses_.window.fileName);
    PairReader pairs(text);
    for (;;) {
      const auto pair = pairs.Next();
      if (!pair.has_value()) break;
      if (EqualsIgnoringCase(pair->key, "project")) named.emplace_back(pair->value);
    }
  } catch (const RuntimeError&) {
    named.clear();  // the file went after it was opened
  }
  return named;
}

std::size_t ErrorsIn(const Findings& findings) {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(),
                    [](const Finding& finding) { return finding.severity == Severity::Error; }));
}

std::string SummaryOf(const Findings& findings) {
  if (findings.empty()) return "No problem found";
  const auto errors = ErrorsIn(findings);
  return Counted(errors, "error", "errors") + ", " +
         Counted(findings.size() - errors, "warning", "warnings");
}

}  // namespace gorbex
