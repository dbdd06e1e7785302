#include "build/failed_build.h"

#include <set>
#include <string>
#include <utility>

namespace gorbex {

void FailedBuild::mnuQueueBuildFailed_Click() {
  std::set<std::string> projects;
  for (const FailedProject& project : failed_.All()) projects.insert(project.path);
  run_.BuildAgain(std::move(projects));
}

}  // namespace gorbex
