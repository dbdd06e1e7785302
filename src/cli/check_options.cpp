#include "cli/check_options.h"

#include "core/text.h"

namespace gorbex::cli {

void AddCheckOptions(CLI::App& command, CheckSelection& selection) {
  const auto add = [&](const std::string& name, std::vector<std::string>& ids,
                       const std::string& description) {
    command.add_option(name, ids, description)->delimiter(',')->allow_extra_args(false);
  };
  add("--only", selection.only, "Do this check; may be repeated");
  add("--ignore", selection.ignored, "Leave this check out; may be repeated");
}

void RequireKnownIds(const CheckSelection& selection) {
  std::string unknown;
  for (const auto* ids : {&selection.only, &selection.ignored}) {
    for (const std::string& id : *ids) {
      if (FindCheck(id) == nullptr) unknown.append(unknown.empty() ? "" : ", ").append(id);
    }
  }
  if (unknown.empty()) return;
  std::string known;
  for (const Check& check : AllChecks()) known.append("\n  ").append(check.id);
  throw Failure("unknown check: " + unknown + "; there are:" + known);
}

CheckSelection SelectionOf(Session& session, CheckSelection selection, const std::string& folder) {
  const IgnoredChecks listed = IgnoredIn(session.program().platform.files, folder);
  if (!listed.problems.empty()) throw Failure(Plain(Joined(listed.problems, "\n")));
  // Asked for by name is asked for.
  if (selection.only.empty()) {
    selection.ignored.insert(selection.ignored.end(), listed.ids.begin(), listed.ids.end());
  }
  return selection;
}

}  // namespace gorbex::cli
