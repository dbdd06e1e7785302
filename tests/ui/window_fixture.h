#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "app/program.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/window_journal.h"
#include "tests/ui/user.h"
#include "ui/event_loop_pump.h"
#include "ui/main_frame.h"
#include "ui/project_tree.h"
#include "window_bench.h"

namespace gorbex::test {

/// The real window over the system's services with the sample product and the stand-in compiler;
/// dialogs are answered by the test.
class WindowFixture : public ::testing::Test {
 protected:
  WindowFixture();
  ~WindowFixture() override;

  /// Starts the program as its user does.
  void Open(const std::string& commandLine = "");

  /// Closes the window; false when it stays open.
  bool Close();

  /// Runs the queue by its key and waits for the end.
  void Build();

  /// Of a project of the product.
  [[nodiscard]] static std::string Path(const std::string& folderName) {
    return "C:\\Storefront\\" + folderName + "\\Store" + folderName + ".vbp";
  }

  /// In the tree, of a node in sight.
  [[nodiscard]] static wxPoint PointOf(const TreeNode& node) {
    const wxRect place = The<ui::ProjectTree>("tvwProjects").PlaceOf(node);
    return {place.x + place.width / 2, place.y + place.height / 2};
  }

  [[nodiscard]] std::string Icons() const { return IconsOf(program->window.lvwQueue); }

  /// The lines of the journal since the last call.
  Journal Asked() { return std::exchange(journal, {}); }

  static constexpr const char* kProduct = "C:\\Storefront\\Storefront.bpf";

  WindowBench bench;
  ui::EventLoopPump pump;
  Journal journal;
  ScriptedDialogs dialogs{journal};
  std::unique_ptr<Program> program;
  ui::MainFrame* frame = nullptr;
  User user;
};

}  // namespace gorbex::test
