#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "analysis/reference_update.h"
#include "core/activity_log.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/registry_tools.h"
#include "core/signal.h"
#include "freshness/build_record.h"
#include "freshness/file_looks.h"
#include "freshness/reason.h"
#include "freshness/record_file.h"
#include "platform/clock.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// Whether a project needs a build.
struct Judgement {
  std::vector<Reason> reasons;  ///< why it does; empty when it is up to date
  std::string since;            ///< when it was built into its place; empty for never
  std::optional<std::chrono::milliseconds> lastDuration;  ///< of that build

  [[nodiscard]] bool IsUpToDate() const { return reasons.empty(); }
};

/// The first reasons, one on each line; for a project that is up to date, since when it is.
[[nodiscard]] std::string NoteOf(const Judgement& judgement);

/// Knows the inputs of every build, and compares them with the present ones. A project is up to
/// date when everything that its last successful build was made from is still the same, and so is
/// the binary. File times are ignored.
class Freshness {
 public:
  struct Uses {
    const frmBuilder& window;
    const clsOptions& options;
    FileSystem& files;
    const RegistryTools& registry;
    const ComponentInspector& components;
    const Clock& clock;
    ActivityLog& log;
    const ReferenceUpdate& references;
    std::string programFolder;
  };

  explicit Freshness(const Uses& uses);

  /// A build that is about to begin.
  struct Taken {
    BuildRecord record;
    std::chrono::milliseconds start{0};
  };

  /// Notes the inputs of a build that is about to begin. An empty folder means the project's own.
  /// Nothing when the project file cannot be read.
  [[nodiscard]] std::optional<Taken> Take(const std::string& project, const std::string& folder);

  /// Notes a build that has succeeded. A record that cannot be written is told once and logged.
  void Note(std::optional<Taken> taken);

  /// Judges a loaded project for a run with the present settings. Writes nothing.
  [[nodiscard]] Judgement Judge(const std::string& project);

  /// As Judge, for a program that has the turn to build. For a project that is up to date it also
  /// records how its files look now, so that they need not be read again.
  [[nodiscard]] Judgement JudgeInRun(const std::string& project);

  /// How long the last build of a project into a folder (empty: its own) took; nothing when none is
  /// recorded.
  [[nodiscard]] std::optional<std::chrono::milliseconds> LastDuration(const clsMember& project,
                                                                      const std::string& folder);

  /// To be called when files or the registry may have changed.
  void LookAgain();

  Signal<std::string> told;

 private:
  class Check;
  class SharedCheck;

  /// The result of a check of a shared input.
  struct SharedFinding {
    std::optional<Reason> reason;
    SharedInput renewed;  ///< the same input as it looks now; null when it looks as known
  };

  /// Checks each input once until somebody looks again.
  [[nodiscard]] const SharedFinding& FindingOf(const SharedInput& input);

  void TakeSources(BuildRecord& record, const ProjectSources& sources);
  void TakeShared(BuildRecord& record, const ProjectSources& sources);
  [[nodiscard]] BuildInput ReferenceInput(const std::string& folder, const std::string& value);
  [[nodiscard]] const std::string& Lead(const std::string& libraryKey);
  void Save(const BuildRecord& record);

  Uses uses_;
  FileLooks looks_;
  RecordFile records_;
  std::unordered_map<std::string, std::string> leads_;  ///< what the registry has said this round
  std::unordered_map<SharedInput, SharedFinding> findings_;  ///< of this round
  bool hasTold_ = false;
};

}  // namespace gorbex
