#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/activity_log.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/pair_reader.h"
#include "core/procedure.h"
#include "core/project_findings.h"
#include "core/project_loader.h"
#include "core/project_views.h"
#include "core/registry_tools.h"
#include "platform/file_system.h"

namespace gorbex {

/// Why a text is not a build project file: it would load as an empty one, or without its first
/// line, and saving would lose it. Nothing when it looks sound.
[[nodiscard]] std::optional<std::string> BuildProjectProblem(std::string_view text);

/// The projects that a build project file names, whether they can be loaded or not; none when it
/// cannot be read.
[[nodiscard]] std::vector<std::string> ProjectsNamedIn(const FileReader& files,
                                                       const std::string& buildProject);

/// Loads and saves build project files (.bpf) and keeps the list of recent ones.
class BuildProjectFile {
 public:
  struct Uses {
    frmBuilder& window;
    FileSystem& files;
    RegistryTools& registry;
    clsOptions& options;
    ActivityLog& log;
    Dialogs& dialogs;
    ErrorReport& report;
    ProjectLoader& reader;
    ProjectViews& views;
    ProjectFindings& findings;
  };

  explicit BuildProjectFile(const Uses& uses) : uses_(uses) {}

  /// Says how to treat projects whose files are missing, and queue rows without a project.
  enum class Unread {
    IsAskedAbout,  ///< one question names the missing files and offers to remove them
    IsKept,        ///< missing ones stay in the build project; see Missing()
    IsRemoved,     ///< missing ones are taken out of the build project
    IsLeftOut,     ///< not shown, nor are rows without a project: for commands that only look
  };

  /// Loads a file in place of the open build project and tells of the projects that are not sound.
  /// False when the file cannot be read or is not a build project file: what is open stays. Also
  /// false when a later error was answered with Abort: what was loaded so far stays, and the build
  /// project then has no file name.
  bool LoadProject(const std::string& path, Unread unread = Unread::IsAskedAbout);

  /// As LoadProject, and shows the open build project in the title.
  bool OpenProject(const std::string& path, Unread unread = Unread::IsAskedAbout);

  /// The project files that were missing when the build project was loaded and that are kept in it:
  /// saving writes their lines again. Their rows in the queue are grey.
  [[nodiscard]] const std::vector<std::string>& Missing() const { return missing_; }

  /// A row of the queue was left out: its project.
  Signal<std::string> rowLeftOut;

  /// Writes the file and moves it to the top of the recent files. False when an error was answered
  /// with Abort.
  bool SaveProject(const std::string& path);

  /// Whether a rule says that the build project has changed, or saving would write something else
  /// than what was last loaded or saved.
  [[nodiscard]] bool Changed() const;

  /// Offers to save what has changed. False when the build project must stay open: the question was
  /// dismissed, or the file was not saved.
  [[nodiscard]] bool OfferToSave(Procedure& on);

  /// Reads the recent files into the menu.
  void ShowRecentFiles();

  /// Puts an empty build project without a file in place of the open one.
  void BeginNew();

  // These three offer to save first.
  void mnuFileNew_Click();
  void mnuFileOpen_Click();

  /// `entry` counts from 0.
  void mnuFileMRU_Click(std::size_t entry);

  /// A build project without a file name is saved as Save As does. Both ask before they drop
  /// projects that could not be read when the file was loaded.
  void mnuFileSave_Click();
  void mnuFileSaveAs_Click();

 private:
  /// Takes one line of the file; each key has its own routine.
  void Take(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeProject(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeQueueRow(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  template <bool clsOptions::*Option>
  void TakeFlag(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeBreaking(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeVersion(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeBuildFolder(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void LeaveOutUnreadRows();
  void NoteMissing(const std::string& path);
  void ForgetMissing();
  void NoteMissingRows();
  [[nodiscard]] bool MayRemoveMissing(Unread unread);
  void RemoveMissing();
  [[nodiscard]] std::optional<std::string> ReadFile(Procedure& on, const std::string& path);
  void ShowBuiltFiles(Procedure& on);
  [[nodiscard]] std::string FileText() const;
  [[nodiscard]] bool MayDrop();
  void RememberRecent(Procedure& on, const std::string& path);
  void SetTitle(const std::string& path);

  Uses uses_;
  std::vector<std::string> leftOut_;  ///< projects of the open file that could not be read
  std::vector<std::string> missing_;  ///< those with a project line come first
  std::size_t missingLines_ = 0;      ///< how many have a project line
  std::unordered_set<std::string> isMissing_;
  bool notesMissing_ = false;        ///< projects that are missing are noted, not read
  std::optional<std::string> kept_;  ///< the text of the open file; nothing while it has no file
};

}  // namespace gorbex
