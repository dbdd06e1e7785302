#pragma once

#include "app/program.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {

/// The whole program over a system in memory, with its build project cleared as after a start and a
/// user who goes on after every error.
struct MemoryProgram {
  MemoryPlatform platform;
  ScriptedDialogs dialogs{platform.journal};
  Program program{platform.Services(), dialogs};

  MemoryProgram() {
    program.window.ClearBuildProject();
    dialogs.toReports = Answer::Ignore;
  }
};

}  // namespace gorbex::test
