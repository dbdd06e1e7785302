#include "core/project_findings.h"

#include <utility>

#include "core/text.h"

namespace gorbex {

ProjectFindings::ProjectFindings(ProjectLoader& reader) {
  const auto into = [](Findings& findings) {
    return [&findings](const std::string& path, const std::string& reason) {
      findings.push_back({path, reason});
    };
  };
  subscriptions_.Add(reader.leftOut, into(leftOut_));
  subscriptions_.Add(reader.doubtful, into(doubtful_));
}

std::vector<std::string> ProjectFindings::Tell() {
  const Findings leftOut = std::exchange(leftOut_, {});
  const Findings doubtful = std::exchange(doubtful_, {});
  std::string text = Listed("These projects could not be read and are left out:", leftOut);
  text += Listed("The compiler will not load these projects:", doubtful);
  if (!text.empty()) told.Emit(text);
  std::vector<std::string> paths;
  for (const Finding& finding : leftOut) paths.push_back(finding.path);
  return paths;
}

std::string ProjectFindings::Listed(std::string_view heading, const Findings& findings) {
  if (findings.empty()) return {};
  std::vector<std::string> lines;
  for (const auto& [path, reason] : findings) {
    lines.push_back(std::string(path).append(": ").append(reason));
  }
  std::string text(heading);
  return text.append(kLineBreak).append(ShortList(lines)).append(kLineBreak);
}

}  // namespace gorbex
