#pragma once

#include <string>

namespace gorbex {

/// Fetches the latest sources of projects.
class LatestSource {
 public:
  virtual ~LatestSource() = default;

  /// True on success, and for a project outside source control. A failure is told on the status
  /// line.
  virtual bool GetLatestForProject(const std::string& projectKey) = 0;
};

}  // namespace gorbex
