#pragma once

#include <string>

#include "analysis/build_queue.h"
#include "analysis/dependency_marking.h"
#include "analysis/group_dependency.h"
#include "analysis/project_display.h"
#include "analysis/reference_resolution.h"
#include "analysis/reference_update.h"
#include "analysis/tree_commands.h"
#include "app/start_up.h"
#include "build/build_run.h"
#include "build/compile.h"
#include "build/component_registration.h"
#include "build/project_value.h"
#include "build/registration_script.h"
#include "build/version_stamp.h"
#include "core/activity_log.h"
#include "core/build_project_file.h"
#include "core/main_window.h"
#include "core/observed_dialogs.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/project_file_reader.h"
#include "core/registry_tools.h"
#include "core/shell.h"
#include "platform/services.h"
#include "scc/get_latest.h"
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
  ObservedDialogs dialogs;
  ErrorReport report;
  frmBuilder window;
  ActivityLog log;
  RegistryTools registry;
  clsOptions options;
  Shell shell;

  GroupDependency group;
  ReferenceResolution references;
  DependencyMarking marking;
  BuildQueue queue;
  ProjectDisplay display;
  ProjectFileReader reader;
  BuildProjectFile buildProject;
  TreeCommands treeCommands;
  ReferenceUpdate referenceUpdate;

  StartUp start;
  SourceSafeSession session;
  GetLatest latest;
  ProjectValue values;
  VersionStamp version;
  RegistrationScript script;
  Compile compile;
  BuildRun run;
  ComponentRegistration registration;

 private:
  void ConnectFileMenu();
  void ConnectQueueMenu();
  void ConnectToolsMenu();
};

}  // namespace gorbex
