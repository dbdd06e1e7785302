#pragma once

#include <memory>
#include <string>

namespace gorbex {

/// The result of a get.
struct LatestResult {
  enum class Kind { Got, NotControlled, Failed };

  Kind kind = Kind::Failed;
  std::string problem{};  ///< why it failed, in the client's words
  std::string toDo{};     ///< what it leaves to the user; empty for nothing

  /// Also true for a project outside source control: it must not stop the others.
  [[nodiscard]] bool Succeeded() const { return kind != Kind::Failed; }
};

/// Fetches the latest sources of projects.
class LatestSource {
 public:
  virtual ~LatestSource() = default;

  /// A failure is told on the status line, too.
  virtual LatestResult GetLatestForProject(const std::string& projectKey) = 0;

  /// While the result is held, all gets bring the same state of the database, a login that failed
  /// is not tried again, and the user's source-control commands are refused.
  [[nodiscard]] virtual std::shared_ptr<void> BeginBatch() = 0;
};

}  // namespace gorbex
