#pragma once

#include <string>
#include <string_view>

#include "core/activity_log.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/pair_reader.h"
#include "core/procedure.h"
#include "core/project_file_reader.h"
#include "core/project_views.h"
#include "core/registry_tools.h"
#include "platform/file_system.h"

namespace gorbex {

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
    ProjectFileReader& reader;
    ProjectViews& views;
  };

  explicit BuildProjectFile(const Uses& uses) : uses_(uses) {}

  /// What becomes of queue rows whose projects could not be read. Who only looks can do without
  /// them.
  enum class UnreadRows { AreErrors, AreLeftOut };

  /// Loads a file in place of the open build project. False when an error was answered with Abort:
  /// what was loaded so far stays, and the build project then has no file name.
  bool LoadProject(const std::string& path, UnreadRows unread = UnreadRows::AreErrors);

  /// Loads a file and shows what is then open in the title. False as LoadProject.
  bool OpenProject(const std::string& path, UnreadRows unread = UnreadRows::AreErrors);

  /// The project of a queue row that was left out.
  Signal<std::string> rowLeftOut;

  /// Writes the file and moves it to the top of the recent files. False when an error was answered
  /// with Abort.
  bool SaveProject(const std::string& path);

  /// Reads the recent files into the menu.
  void ShowRecentFiles();

  void mnuFileNew_Click();
  void mnuFileOpen_Click();

  /// A build project without a file name is saved as Save As does.
  void mnuFileSave_Click();
  void mnuFileSaveAs_Click();

  /// `entry` counts from 0.
  void mnuFileMRU_Click(std::size_t entry);

 private:
  /// Takes one line of the file; each key has a routine of its own.
  void Take(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeProject(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeQueueRow(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  template <bool clsOptions::*Option>
  void TakeFlag(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeBreaking(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeVersion(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void TakeBuildFolder(Procedure& on, const Pair& pair, TreeNode*& lastRead);
  void LeaveOutUnreadRows();
  void ShowBuiltFiles(Procedure& on);
  [[nodiscard]] std::string FileText() const;
  void RememberRecent(Procedure& on, const std::string& path);
  void SetTitle(const std::string& path);

  Uses uses_;
};

}  // namespace gorbex
