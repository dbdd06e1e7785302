#include "report/run_report.h"

#include <utility>

#include "build/run_uses.h"
#include "core/file_tools.h"

namespace gorbex {

RunReport ReportMaker::Of(const RunRecord& record, const RunTerms& terms,
                          std::optional<Findings> findings) const {
  RunReport report{record, {}, terms, {}, std::move(findings)};
  // Such as one that the check before it has refused.
  if (!record.HasEnded()) report.record.On(RunEvent(record.End()));
  report.uses = UsesInRun(parts_.window.ProjectMembers, parts_.group, PathsOf(record));
  report.timeline = TimelineOf(report.record, report.uses, record.End().duration);
  report.isCheckedBefore = report.findings.has_value();
  if (!report.findings) report.findings = FindingsNow(terms);
  return report;
}

// A list of ignored checks with lines that name none is used as far as it can be understood.
std::optional<Findings> ReportMaker::FindingsNow(const RunTerms& terms) const {
  const std::string& file = parts_.window.fileName;
  if (file != terms.file) return std::nullopt;
  CheckSelection selection;
  if (!file.empty()) selection.ignored = IgnoredIn(parts_.files, StripPath(file)).ids;
  return parts_.check.RunOpen(selection);
}

}  // namespace gorbex
