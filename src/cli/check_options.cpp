#include "cli/check_options.h"

#include "cli/text_output.h"

namespace gorbex::cli {

void AddCheckOptions(CLI::App& command, CheckOptions& options) {
  const auto add = [&](const std::string& name, std::vector<std::string>& ids,
                       const std::string& description) {
    command.add_option(name, ids, description)->delimiter(',')->allow_extra_args(false);
  };
  add("--only", options.only, "Do this check; may be repeated");
  add("--ignore", options.ignored, "Leave this check out; may be repeated");
}

void RequireKnownIds(const CheckOptions& options) {
  std::string unknown;
  for (const auto* ids : {&options.only, &options.ignored}) {
    for (const std::string& id : *ids) {
      if (FindCheck(id) == nullptr) unknown.append(unknown.empty() ? "" : ", ").append(id);
    }
  }
  if (unknown.empty()) return;
  std::string known;
  for (const Check& check : AllChecks()) known.append("\n  ").append(check.id);
  throw Failure("unknown check: " + unknown + "; there are:" + known);
}

CheckSelection SelectionOf(Session& session, const CheckOptions& options,
                           const std::string& folder) {
  const auto& files = session.program().platform.files;
  IgnoredChecks listed = IgnoredIn(files, folder);
  if (!listed.problems.empty()) {
    std::string text;
    for (const std::string& problem : listed.problems) {
      text.append(text.empty() ? "" : "\n").append(Plain(problem));
    }
    throw Failure(text);
  }
  CheckSelection selection{options.only, options.ignored};
  // Asked for by name is asked for.
  if (selection.only.empty()) {
    selection.ignored.insert(selection.ignored.end(), listed.ids.begin(), listed.ids.end());
  }
  return selection;
}

}  // namespace gorbex::cli
