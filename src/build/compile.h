#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "build/compiler_path.h"
#include "core/activity_log.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "core/run_events.h"
#include "core/shell.h"
#include "core/signal.h"
#include "core/work.h"
#include "freshness/freshness.h"
#include "platform/file_system.h"

namespace gorbex {

/// Whether a project was not loaded because its file was missing, and the file is still missing.
[[nodiscard]] bool IsGone(const std::string& path, const MemberCollection& members,
                          const FileReader& files);

/// Compiles single projects and judges the compiler's result log.
class Compile {
 public:
  struct Uses {
    frmBuilder& window;
    FileSystem& files;
    Shell& shell;
    Dialogs& dialogs;
    ActivityLog& log;
    CompilerPath& compiler;
    Work& work;
    Freshness& freshness;
    std::string programFolder;
  };

  explicit Compile(const Uses& uses);

  /// Compiles a loaded project into a folder, or into the build directory when the folder is empty.
  /// True only when the result log tells of a build without failure; any error is a failure.
  bool CompileProject(const std::string& projectPath, const std::string& outDir);

  /// As CompileProject, but into the project's own output folder instead of the build directory.
  bool CompileInPlace(const std::string& projectPath);

  /// A compile at work, one of several of a run. It must not outlive the program's parts.
  class Going {
   public:
    /// Waits for the compiler's end at most for the patience given. True at once when no compiler
    /// was started.
    [[nodiscard]] bool HasEnded(std::chrono::milliseconds patience) const;

   private:
    friend class Compile;

    CompileEnded result_;
    std::string resultLog_;
    std::optional<Freshness::Taken> taken_;
    std::unique_ptr<Shell::Program> program_;
    std::shared_ptr<void> task_;
  };

  /// Starts to compile a loaded project into the build directory, for a run. The run has a place
  /// for each of its compilers, numbered from 1, and each place has its own result log. When the
  /// compiler cannot be started, Finish tells why.
  [[nodiscard]] Going Start(const std::string& projectPath, std::size_t place);

  /// Judges a compile that has ended, and announces it.
  CompileEnded Finish(Going going);

  /// Announces every compile that was not refused.
  Signal<CompileEnded> ended;

  /// The right of a command to build, until the result is released. Nothing, told on the status
  /// line, while another command or another program builds.
  [[nodiscard]] std::shared_ptr<void> BeginBuild();

  /// Whether a result log tells of success. The text of a failed build is added to the log text
  /// box.
  bool CheckLogFile(const std::string& logPath, const std::string& projectPath);

  /// Tells the user that a compiler is needed and lets him choose one, when there is none. Settings
  /// stay as the open build project and the run have them.
  void AskForCompiler();

  /// The full path of the compiler's result log, in double quotes.
  [[nodiscard]] std::string QuotedResultLog() const;

  /// The project of the last compile that wrote the result log above; empty before the first.
  [[nodiscard]] const std::string& ResultLogProject() const { return resultLogProject_; }

  /// Why the last compile has no result log; empty when it has one.
  [[nodiscard]] const std::string& LastProblem() const { return problem_; }

 private:
  /// An empty folder means the project's own output folder.
  [[nodiscard]] bool CompileInto(const std::string& folder, const std::string& projectPath);
  [[nodiscard]] Going Begin(std::shared_ptr<void> task, const std::string& projectPath,
                            const std::string& folder, std::size_t place);
  void Launch(Going& going, const std::string& folder);
  void Judge(Going& going);
  [[nodiscard]] std::string CommandLine(const Going& going, const std::string& folder) const;
  [[nodiscard]] std::string ResultLog(std::size_t place) const;
  [[nodiscard]] std::shared_ptr<void> Begin(Task task, bool isFree);
  void RemoveStaleLog(const std::string& resultLog);

  Uses uses_;
  ErrorReport report_;
  std::string problem_;
  std::string resultLogProject_;
  std::weak_ptr<void> runTask_;  ///< shared by the compiles of a run
};

}  // namespace gorbex
