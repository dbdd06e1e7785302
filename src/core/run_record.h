#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/run_events.h"

namespace gorbex {

/// The results of a build run, gathered from its announcements for the reports written at its end.
class RunRecord {
 public:
  enum class Outcome { NotBuilt, Built, Failed, UpToDate };

  struct Project {
    std::string path;
    Outcome outcome = Outcome::NotBuilt;
    std::size_t place{};                 ///< of its compiler, from 1; 0 when it did not begin
    std::chrono::milliseconds start{0};  ///< since the run began
    std::chrono::milliseconds duration{0};
    std::optional<FailurePlace> failure{};  ///< nothing when it did not fail
    std::string log{};                      ///< the compiler's words, or why there are none
    std::string reason{};       ///< why it was built or passed over, where the run looked
    std::optional<bool> got{};  ///< the latest sources; nothing when none were to be got
    std::string notGot{};       ///< why not

    [[nodiscard]] bool IsNotGot() const { return got == false; }
    [[nodiscard]] bool HasBegun() const { return place > 0; }

    /// Whether the run passed over it, because it uses one that failed.
    [[nodiscard]] bool IsSkipped() const {
      return outcome == Outcome::NotBuilt && !HasBegun() && !log.empty();
    }
  };

  /// The checked projects in queue order.
  explicit RunRecord(const std::vector<std::string>& paths);

  void On(const RunEvent& event);

  /// Adds a project that was checked after the run had begun; nothing when it is known.
  void Add(const std::string& path);

  /// Adds a warning to the messages.
  void Warn(const std::string& message) { messages_.push_back(message); }

  [[nodiscard]] const std::vector<Project>& Projects() const { return projects_; }
  /// Whether several compilers could run at once.
  [[nodiscard]] bool IsSideBySide() const { return isSideBySide_; }

  [[nodiscard]] const std::vector<std::string>& Messages() const { return messages_; }

  /// Until the run is done, the end of a stopped run without results.
  [[nodiscard]] const RunEnded& End() const { return end_; }
  [[nodiscard]] bool HasEnded() const { return hasEnded_; }

 private:
  [[nodiscard]] Project* Find(const std::string& path);
  void Take(const ProjectStarted& started);
  void Take(const ProjectCompiled& compiled);
  void Take(const ProjectUpToDate& fresh);
  void Take(const ProjectOutdated& outdated);
  void Take(const LatestGot& latest);
  void Take(const RunEnded& end);

  std::vector<Project> projects_;
  std::unordered_map<std::string, std::size_t> numbers_;  ///< in projects_, by path
  std::vector<std::string> messages_;
  bool isSideBySide_ = false;
  bool hasEnded_ = false;
  RunEnded end_{RunResult::Stopped, 0, 0, std::chrono::milliseconds{0}};
};

}  // namespace gorbex
