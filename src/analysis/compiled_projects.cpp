#include "analysis/compiled_projects.h"

#include "core/node_key.h"
#include "core/procedure.h"
#include "core/project_file.h"

namespace gorbex {

CompiledProjects::CompiledProjects(const Uses& uses, Signal<CompileEnded>& compiles) : uses_(uses) {
  subscriptions_.Add(compiles, [this](const CompileEnded& compile) {
    isStale_ = true;
    Procedure::IgnoringErrors().Run([&](Procedure&) { ReadAgain(compile.path); });
  });
  subscriptions_.Add(uses_.work.changed, [this] { MarkWhenDone(); });
}

// A file that cannot be read now leaves everything as it was.
void CompiledProjects::ReadAgain(const std::string& path) {
  if (!uses_.window.ProjectMembers.Contains(path)) return;
  uses_.window.ProjectMembers.TakeBuildFacts(ParseProjectFile(path, uses_.files.Read(path)).member);
  uses_.queue.ShowProjectFacts(path);
  if (uses_.window.lvwData.Tag() != path) return;
  TreeNode* node = uses_.window.tvwProjects.Find(NodeKey(node_prefix::kProject, path));
  if (node != nullptr) uses_.display.ShowProjectDetails(*node);
}

void CompiledProjects::MarkWhenDone() {
  const Work& work = uses_.work;
  if (!isStale_ || !work.MayBuild() || work.Goes(Task::Request)) return;
  isStale_ = false;
  uses_.display.MarkAll();
  uses_.display.RefreshReferences();
}

}  // namespace gorbex
