#pragma once

#include <gtest/gtest.h>

#include "app/program.h"
#include "tests/support/group_builder.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {

/// Every node of a tree, each before its children.
inline std::vector<const TreeNode*> NodesOf(const TreeView& tree) {
  std::vector<const TreeNode*> nodes(tree.Tops().begin(), tree.Tops().end());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto& children = nodes[i]->Children();
    nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(i + 1), children.begin(),
                 children.end());
  }
  return nodes;
}

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
