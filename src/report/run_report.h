#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/group_dependency.h"
#include "build/last_run.h"
#include "build/run_timeline.h"
#include "check/group_check.h"
#include "core/main_window.h"
#include "core/run_record.h"
#include "platform/file_system.h"

namespace gorbex {

/// Everything that a report tells of a run.
struct RunReport {
  RunRecord record;
  RunTimeline timeline;
  RunTerms terms;
  std::vector<std::vector<std::size_t>> uses;  ///< by the record's numbers
  std::optional<Findings> findings;            ///< nothing when nobody looked for them
  bool isCheckedBefore = false;                ///< the findings are of a check before the run
  std::string picture{};      ///< of the group's dependencies, as markup; empty for none
  std::string commandLine{};  ///< in UTF-8; empty for a run of the window
};

/// Makes reports of the open build project's runs.
class ReportMaker {
 public:
  struct Parts {
    const frmBuilder& window;
    const GroupDependency& group;
    const GroupCheck& check;
    const FileReader& files;
  };

  explicit ReportMaker(const Parts& parts) : parts_(parts) {}

  /// The report of a run that has ended. `findings` are those of a check before the run; without
  /// them the group is checked now. `uses` tells what the projects of the run used; it may be null
  /// unless another build project is open now. In that case nothing is checked and there is no
  /// picture.
  [[nodiscard]] RunReport Of(const RunRecord& record, const RunTerms& terms,
                             std::optional<Findings> findings,
                             const LastRun::Numbers* uses = nullptr) const;

 private:
  [[nodiscard]] std::string Picture(const RunRecord& record) const;

  Parts parts_;
};

}  // namespace gorbex
