#include "report/run_report.h"

#include <unordered_map>
#include <utility>

#include "analysis/dependency_graph.h"
#include "analysis/group_layout.h"
#include "analysis/group_svg.h"
#include "build/run_uses.h"
#include "report/run_words.h"

namespace gorbex {

RunReport ReportMaker::Of(const RunRecord& record, const RunTerms& terms,
                          std::optional<Findings> findings, const LastRun::Numbers* uses) const {
  RunReport report{record, {}, terms, {}, std::move(findings)};
  report.uses = uses != nullptr
                    ? *uses
                    : UsesInRun(parts_.window.ProjectMembers, parts_.group, PathsOf(record));
  report.timeline = TimelineOf(report.record, report.uses, record.End().duration);
  report.isCheckedBefore = report.findings.has_value();
  if (parts_.window.fileName != terms.file) return report;
  if (!report.findings) {
    report.findings = parts_.check.RunOpen(SelectionBeside(parts_.files, terms.file));
  }
  report.picture = Picture(report.record);
  return report;
}

std::string ReportMaker::Picture(const RunRecord& record) const {
  const MemberCollection& members = parts_.window.ProjectMembers;
  if (members.Count() == 0) return "";
  std::unordered_map<std::string, ProjectState> states;
  for (const auto& project : record.Projects()) {
    states.emplace(project.path, StateOf(ResultOf(record, project)));
  }
  std::vector<ProjectState> byNumber;
  for (const auto& member : members) {
    const auto found = states.find(member->path);
    byNumber.push_back(found == states.end() ? ProjectState::None : found->second);
  }
  const DependencyGraph graph(members, parts_.group);
  const auto projects = PictureProjectsOf(members);
  return GroupSvg(LayOut(graph, projects), projects, "Dependencies of the group", byNumber);
}

}  // namespace gorbex
