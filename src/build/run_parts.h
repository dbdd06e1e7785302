#pragma once

#include "analysis/group_dependency.h"
#include "analysis/reference_update.h"
#include "build/compile.h"
#include "build/project_value.h"
#include "build/registration_script.h"
#include "build/replaced_values.h"
#include "build/version_stamp.h"
#include "core/activity_log.h"
#include "core/latest_source.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/shell.h"
#include "core/work.h"
#include "freshness/freshness.h"
#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"

namespace gorbex {

/// The parts of the program that a run works with.
struct RunParts {
  frmBuilder& window;
  const clsOptions& options;
  ActivityLog& log;
  Dialogs& dialogs;
  ErrorReport& report;
  EventPump& events;
  const Clock& clock;
  Shell& shell;
  Work& work;
  LatestSource& latest;
  ReferenceUpdate& references;
  ProjectValue& values;
  VersionStamp& version;
  RegistrationScript& script;
  Compile& compile;
  ReplacedValues& replaced;
  Freshness& freshness;
  const GroupDependency& group;
  const FileReader& files;
};

}  // namespace gorbex
