#include "build/failed_build.h"

#include <string>
#include <utility>
#include <vector>

namespace gorbex {

// The run lets the user act, so a row may be gone when it has ended.
void FailedBuild::mnuQueueBuildFailed_Click() {
  ListView& queue = window_.lvwQueue;
  std::vector<std::pair<std::string, bool>> before;
  for (const auto& row : queue.Rows()) before.emplace_back(row->Key(), row->Checked());
  marks_.mnuQueueMarkFailed_Click();
  run_.mnuFileBuild_Click();
  for (const auto& [key, checked] : before) {
    if (ListRow* row = queue.Find(key)) row->SetChecked(checked);
  }
}

}  // namespace gorbex
