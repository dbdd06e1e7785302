#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/build_queue.h"
#include "analysis/group_dependency.h"
#include "core/build_project_file.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/project_findings.h"
#include "core/project_loader.h"
#include "core/project_views.h"
#include "core/signal.h"
#include "platform/file_system.h"

namespace gorbex {

/// Makes a build project of all projects of a group file, or below a folder, that are queued so
/// that each comes after all that it uses.
class NewBuildProject {
 public:
  struct Uses {
    frmBuilder& window;
    FileSystem& files;
    clsOptions& options;
    Dialogs& dialogs;
    ErrorReport& report;
    BuildProjectFile& buildProject;
    ProjectLoader& reader;
    ProjectFindings& findings;
    ProjectViews& views;
    BuildQueue& queue;
    const GroupDependency& group;
  };

  enum class LineEnds { AreAskedAbout, AreConverted, AreKept };

  struct Request {
    std::string source;       ///< a group file (.vbg) or a folder
    std::string buildFolder;  ///< empty, or with a "\" at its end
    LineEnds lineEnds = LineEnds::AreAskedAbout;
    std::vector<std::string> projects{};  ///< these project files instead of a source
  };

  struct Result {
    std::optional<std::string> problem;  ///< why nothing was made, as in "no projects found"
    std::vector<std::vector<std::string>> cycles;  ///< projects that use one another in a circle
    bool isCancelled = false;                      ///< the problem is that the user stopped it
  };

  explicit NewBuildProject(const Uses& uses) : uses_(uses) {}

  /// Replaces the open build project, without asking, by one that has no file yet; it keeps
  /// compatibility. What is open stays when the source names no project. An error names the file
  /// that cannot be read, or not be converted. Projects that cannot be read are told of by the
  /// reader's `leftOut`.
  Result Make(const Request& request);

  /// Asks for the source, after an offer to save what is open.
  void mnuFileNewFrom_Click();

  /// The command has made a build project, and told of it.
  Signal<> made;

 private:
  [[nodiscard]] bool MayGoOn(const std::vector<std::string>& projects, LineEnds lineEnds);
  void ReadAll(const std::vector<std::string>& projects);
  [[nodiscard]] std::vector<std::vector<std::string>> QueueAll();
  [[nodiscard]] std::optional<std::string> AskForSource();
  void Tell(const std::string& source, const Result& result);

  Uses uses_;
};

}  // namespace gorbex
