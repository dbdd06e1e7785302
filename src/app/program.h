#pragma once

#include "analysis/build_queue.h"
#include "analysis/compiled_projects.h"
#include "analysis/dependency_marking.h"
#include "analysis/dependency_picture.h"
#include "analysis/group_dependency.h"
#include "analysis/missing_list.h"
#include "analysis/new_build_project.h"
#include "analysis/project_display.h"
#include "analysis/project_search.h"
#include "analysis/queue_marks.h"
#include "analysis/reference_resolution.h"
#include "analysis/reference_update.h"
#include "analysis/tree_commands.h"
#include "app/shut_down.h"
#include "app/start_up.h"
#include "build/build_run.h"
#include "build/build_settings.h"
#include "build/compile.h"
#include "build/compiler_path.h"
#include "build/component_registration.h"
#include "build/component_test.h"
#include "build/immediate_build.h"
#include "build/last_run.h"
#include "build/project_value.h"
#include "build/registration_script.h"
#include "build/replaced_values.h"
#include "build/version_stamp.h"
#include "check/check_list.h"
#include "check/group_check.h"
#include "core/activity_log.h"
#include "core/build_project_file.h"
#include "core/check_form.h"
#include "core/dependencies_form.h"
#include "core/editor.h"
#include "core/failed_projects.h"
#include "core/failure_steps.h"
#include "core/last_run_form.h"
#include "core/log_viewer.h"
#include "core/logs_form.h"
#include "core/main_window.h"
#include "core/missing_form.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/project_findings.h"
#include "core/project_loader.h"
#include "core/registry_tools.h"
#include "core/run_notice.h"
#include "core/select_control_form.h"
#include "core/shell.h"
#include "core/test_control_form.h"
#include "core/work.h"
#include "freshness/freshness.h"
#include "freshness/outdated_marks.h"
#include "mail/mail_service.h"
#include "platform/services.h"
#include "report/last_run_list.h"
#include "report/run_report.h"
#include "scc/change_scan.h"
#include "scc/get_latest.h"
#include "scc/label_dialog.h"
#include "scc/reference_browse.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// The whole program over one set of platform services: the one place where its parts are made and
/// joined. Front ends and tests own one each and work on its members.
class Program {
 public:
  /// The services and the dialogs must outlive the program.
  Program(const PlatformServices& services, Dialogs& frontEnd);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  PlatformServices platform;
  Dialogs& dialogs;
  ErrorReport report;
  frmBuilder window;
  frmLogs logs;
  ActivityLog log;
  RegistryTools registry;
  clsOptions options;
  Work work;
  Shell shell;

  GroupDependency group;
  ReferenceResolution references;
  DependencyMarking marking;
  BuildQueue queue;
  ProjectDisplay display;
  ProjectLoader reader;
  ProjectFindings findings;
  BuildProjectFile buildProject;
  NewBuildProject newBuildProject;
  TreeCommands treeCommands;
  ProjectSearch search;
  frmMissing missing;
  MissingList missingList;
  ReferenceUpdate referenceUpdate;
  Freshness freshness;
  GroupCheck check;
  frmCheck checkForm;
  CheckList checkList;

  ReplacedValues replaced;
  CompilerPath compiler;
  StartUp start;
  SourceSafeSession session;
  GetLatest latest;
  ChangeScan changes;
  Labelling labelling;
  ReferenceBrowse browse;
  ProjectValue values;
  VersionStamp version;
  RegistrationScript script;
  Compile compile;
  BuildRun run;
  FailedProjects failed;
  Editor editor;
  FailureSteps failureSteps;
  RunNotice notice;
  ReportMaker reports;
  LastRun lastRun;
  frmLastRun lastRunForm;
  LastRunList lastRunList;
  CompiledProjects compiled;
  QueueMarks marks;
  OutdatedMarks outdated;
  frmDependencies dependencies;
  DependencyPicture picture;
  MailService mail;
  ComponentRegistration registration;
  ShutDown shutDown;
  ImmediateBuild immediate;
  BuildSettings settings;
  LogViewer logViewer;

  frmSelectControl selectControl;
  frmTestControl testControl;
  ComponentTest componentTest;

 private:
  Subscriptions subscriptions_;

  void ConnectFileMenu();
  void ConnectQueueMenu();
  void ConnectToolsMenu();
  void ConnectSourceControl();
  void ConnectComponentTest();
};

}  // namespace gorbex
