#pragma once

#include <gtest/gtest.h>

#include "app/program.h"
#include "tests/support/group_builder.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/tree_nodes.h"

namespace gorbex::test {

/// The whole program on a memory platform, with its build project cleared as after a start.
class ProgramFixture : public ::testing::Test {
 protected:
  ProgramFixture() { program.window.ClearBuildProject(); }

  /// The effects since the last call; line numbers of error reports are replaced by "*".
  Journal Effects() {
    Journal lines = std::exchange(platform.journal, {});
    for (auto& line : lines) line = WithoutLineNumber(std::move(line));
    return lines;
  }

  MemoryPlatform platform;
  ScriptedDialogs dialogs{platform.journal};
  Group group{platform};
  Program program{platform.Services(), dialogs};
};

}  // namespace gorbex::test
