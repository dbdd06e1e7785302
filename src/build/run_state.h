#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/users_of_failed.h"
#include "build/latest_report.h"
#include "build/question_time.h"
#include "build/reference_consent.h"
#include "build/run_parts.h"
#include "build/time_left.h"
#include "core/list_columns.h"
#include "core/list_view.h"
#include "platform/clock.h"

namespace gorbex {

/// The keys of rows that a run takes instead of the checked ones; nothing for a run over the
/// checked ones.
using RowsToRepeat = std::optional<std::set<std::string>>;

/// The rows of a run, and its results so far.
struct RunState {
  RunState(const RunParts& parts, RowsToRepeat rows)
      : rowsToRepeat(std::move(rows)),
        clock(parts.clock),
        questionTime(parts.clock),
        start(parts.clock.Elapsed()),
        consent(parts.window, parts.references, parts.dialogs, parts.work) {}

  /// Time that runs only while no question is open.
  [[nodiscard]] std::chrono::milliseconds WorkingTime() const {
    return clock.Elapsed() - questionTime.Total();
  }

  [[nodiscard]] bool Takes(const ListRow& row) const {
    return rowsToRepeat ? rowsToRepeat->contains(row.Key()) : row.Checked();
  }

  /// The paths of the projects that the run takes, in the queue's order.
  [[nodiscard]] std::vector<std::string> TakenFrom(const ListView& queue) const {
    std::vector<std::string> paths;
    for (const auto& row : queue.Rows()) {
      if (Takes(*row)) paths.push_back(row->SubItem(queue_column::kProject));
    }
    return paths;
  }

  void NoteUnamended(const std::string& path) {
    if (std::ranges::find(unamended, path) == unamended.end()) unamended.push_back(path);
  }

  /// To be asked after the last project that began: whether the run was told to end before all were
  /// done.
  [[nodiscard]] bool IsStopped(const Work& work) const {
    const bool isWhole = number >= checked;
    return (!isWhole && (isCancelled || work.RunStops())) || (errors > 0 && work.Ends());
  }

  const RowsToRepeat rowsToRepeat;
  const Clock& clock;
  QuestionTime questionTime;
  std::chrono::milliseconds start;
  std::optional<std::chrono::milliseconds> end;  ///< when every project was passed
  ReferenceConsent consent;
  std::int32_t built = 0;
  std::int32_t errors = 0;
  std::int32_t upToDate = 0;
  std::size_t number = 0;    ///< of the project that began last, from 1
  std::size_t checked = 0;   ///< projects of the run
  bool isCancelled = false;  ///< the user did not want to go on after a failure
  TimeLeft timeLeft;         ///< empty while several projects are built at the same time
  LatestReport gets;
  std::vector<std::string> unamended;          ///< project files that could not be changed as asked
  std::optional<UsersOfFailed> usersOfFailed;  ///< nothing until a project has failed
};

}  // namespace gorbex
