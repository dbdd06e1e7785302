#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/project_loader.h"
#include "core/signal.h"

namespace gorbex {

/// Gathers the problems of the projects that a command read, so that a window can show them in one
/// message.
class ProjectFindings {
 public:
  /// The reader must outlive the findings.
  explicit ProjectFindings(ProjectLoader& reader);

  /// Announces everything gathered since the last call; nothing when every project was sound. Gives
  /// the paths of the projects that were left out.
  std::vector<std::string> Tell();

  /// A message: which projects were left out, which others the compiler will not load, and why.
  Signal<std::string> told;

 private:
  struct Finding {
    std::string path;
    std::string reason;
  };
  using Findings = std::vector<Finding>;

  static std::string Listed(std::string_view heading, const Findings& findings);

  Findings leftOut_;
  Findings doubtful_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex
