#include "app/offered_commands.h"

#include <algorithm>
#include <functional>
#include <initializer_list>

#include "core/node_key.h"

namespace gorbex {
namespace {

using Possible = std::function<bool()>;

void Offer(std::initializer_list<Command*> commands, const Possible& possible) {
  for (Command* command : commands) command->SetPossible(possible);
}

bool IsProjectSelected(const TreeView& tree) {
  const TreeNode* node = tree.Selected();
  return node != nullptr && node->KeyStartsWith(node_prefix::kProject);
}

bool IsInProject(const TreeView& tree) {
  const TreeNode* node = tree.Selected();
  return node != nullptr && node->Parent() != nullptr;
}

bool IsRowSelected(const ListView& list) {
  return list.Selected() != nullptr;
}

// A run walks the queue and its projects.
void OfferFileMenu(MainMenu& menu, const Work& work) {
  const Possible possible = [&work] { return work.MayChangeQueue(); };
  Offer({&menu.mnuFileNew, &menu.mnuFileNewFrom, &menu.mnuFileOpen}, possible);
  for (Command& entry : menu.mnuFileMRU) entry.SetPossible(possible);
  menu.mnuFileBuild.SetPossible([&work] { return work.MayBuild() && work.MayUseSourceControl(); });
}

void OfferQueueMenu(MainMenu& menu, const Work& work, const frmBuilder& window) {
  const ListView& queue = window.lvwQueue;
  const TreeView& tree = window.tvwProjects;
  menu.mnuQueueAdd.SetPossible([&] { return work.MayChangeQueue() && IsInProject(tree); });
  menu.mnuQueueAddAll.SetPossible([&] { return work.MayChangeQueue() && HasProjects(tree); });
  Offer({&menu.mnuQueueMoveUp, &menu.mnuQueueMoveDown, &menu.mnuQueueRemove},
        [&] { return work.MayChangeQueue() && IsRowSelected(queue); });
  Offer({&menu.mnuQueueArrange, &menu.mnuQueueEmpty},
        [&] { return work.MayChangeQueue() && queue.Count() > 0; });
  Offer({&menu.mnuQueueMarkAll, &menu.mnuQueueUnMarkAll, &menu.mnuQueueMarkOutdated},
        [&] { return queue.Count() > 0; });
  Offer({&menu.mnuQueueMarkUses, &menu.mnuQueueMarkUsers}, [&] { return IsRowSelected(queue); });
  menu.mnuQueueTest.SetPossible([&] { return IsRowSelected(queue); });
  menu.mnuQueueBuild.SetPossible([&] { return work.MayBuild() && IsRowSelected(queue); });
}

void OfferFailed(MainMenu& menu, const Program& program) {
  const auto hasFailedRow = [&program] {
    return std::ranges::any_of(program.failed.All(), [&](const FailedProject& project) {
      return program.window.lvwQueue.Find(project.path) != nullptr;
    });
  };
  menu.mnuWindowFailed.SetPossible([&program] { return !program.failed.All().empty(); });
  Offer({&menu.mnuWindowNextFailure, &menu.mnuWindowPreviousFailure},
        [&program] { return program.failureSteps.IsPossible(); });
  menu.mnuQueueMarkFailed.SetPossible(hasFailedRow);
  menu.mnuQueueBuildFailed.SetPossible([hasFailedRow, &work = program.work] {
    return work.MayBuild() && work.MayUseSourceControl() && hasFailedRow();
  });
  menu.mnuQueueWhyFailed.SetPossible([&program] {
    const ListRow* row = program.window.lvwQueue.Selected();
    return row != nullptr && program.failed.Find(row->Key()) != nullptr;
  });
}

void OfferTreeMenu(MainMenu& menu, const Work& work, const frmBuilder& window) {
  const TreeView& tree = window.tvwProjects;
  menu.mnuTreePopupRemoveProject.SetPossible(
      [&] { return work.MayChangeQueue() && IsProjectSelected(tree); });
  Offer({&menu.mnuTreePopupBuildNowDefault, &menu.mnuTreePopupBuildNowNewLocation},
        [&] { return work.MayBuild() && IsProjectSelected(tree); });
  menu.mnuTreePopupGetLatest.SetPossible(
      [&] { return work.MayUseSourceControl() && IsProjectSelected(tree); });
}

void OfferToolsMenu(MainMenu& menu, const Work& work, const frmBuilder& window) {
  Offer({&menu.mnuToolsCheck, &menu.mnuToolsMissing},
        [&] { return HasProjects(window.tvwProjects); });
  Offer({&menu.mnuToolsLabel, &menu.mnuToolsHighlight}, [&] { return work.MayUseSourceControl(); });
  Offer({&menu.mnuToolsGetLatestALL, &menu.mnuToolsGetLatestChanged},
        [&] { return work.MayUseSourceControl() && menu.mnuToolsGetLatest.enabled.Get(); });
  // All projects of a run are built with the same settings.
  Offer({&menu.mnuToolsVersion, &menu.mnuToolsBuildPath, &menu.mnuToolsBuildOptions},
        [&] { return work.MayChangeQueue(); });
  Offer({&menu.mnuDataPopupReg, &menu.mnuDataPopupUnReg},
        [&] { return work.MayRegister() && IsRowSelected(window.lvwData); });
  menu.mnuDataPopupBrowse.SetPossible(
      [&] { return work.MayUseSourceControl() && IsRowSelected(window.lvwData); });
}

}  // namespace

bool HasProjects(const TreeView& tree) {
  return !tree.Tops().empty() && !tree.Tops().front()->Children().empty();
}

void OfferCommands(Program& program) {
  MainMenu& menu = program.window.menu;
  OfferFileMenu(menu, program.work);
  OfferQueueMenu(menu, program.work, program.window);
  OfferFailed(menu, program);
  OfferTreeMenu(menu, program.work, program.window);
  OfferToolsMenu(menu, program.work, program.window);
}

}  // namespace gorbex
