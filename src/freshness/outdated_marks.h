#pragma once

#include <string>
#include <utility>
#include <vector>

#include "analysis/group_dependency.h"
#include "core/main_window.h"
#include "core/work.h"
#include "freshness/freshness.h"

namespace gorbex {

/// Tells which rows of the queue are out of date, and marks them.
class OutdatedMarks {
 public:
  OutdatedMarks(frmBuilder& window, const GroupDependency& group, const Work& work,
                Freshness& freshness)
      : window_(window), group_(group), work_(work), freshness_(freshness) {}

  /// Marks the rows that are out of date and unmarks all others. The status bar tells the numbers,
  /// and which other projects may need a build after those.
  void mnuQueueMarkOutdated_Click();

  /// Every project of the queue, and whether it needs a build now. Changes nothing.
  [[nodiscard]] std::vector<std::pair<std::string, bool>> Judged();

  /// Returns why a row needs a build, or since when it is up to date. Judges now, except during a
  /// run: then it returns the run's judgement, which is empty before the row's turn.
  [[nodiscard]] std::string NoteOf(const ListRow& row);

 private:
  frmBuilder& window_;
  const GroupDependency& group_;
  const Work& work_;
  Freshness& freshness_;
};

}  // namespace gorbex
