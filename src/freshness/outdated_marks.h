#pragma once

#include "core/main_window.h"
#include "freshness/freshness.h"

namespace gorbex {

/// Marks the rows of the queue whose projects are out of date.
class OutdatedMarks {
 public:
  OutdatedMarks(frmBuilder& window, Freshness& freshness)
      : window_(window), freshness_(freshness) {}

  /// Marks these and unmarks all others. Each row notes why, or since when it is up to date; the
  /// status bar tells the numbers.
  void mnuQueueMarkOutdated_Click();

 private:
  frmBuilder& window_;
  Freshness& freshness_;
};

}  // namespace gorbex
