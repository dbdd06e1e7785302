#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/frame.h"

namespace gorbex::cli {

/// Rows at the end of a terminal that change while a command works.
class ProgressRows {
 public:
  /// On a terminal without codes that move the cursor only the first row is shown.
  explicit ProgressRows(const Streams& streams) : streams_(streams) {}

  /// Shows rows (UTF-8) in the place of the former ones; each is cut to one row of the terminal,
  /// and those for which it has no room are left out.
  void Show(std::vector<std::string> rows);
  void Clear() { Show({}); }

 private:
  void Erase(std::string& text);

  const Streams& streams_;
  std::vector<std::size_t> widths_;  ///< of the rows that are shown
};

}  // namespace gorbex::cli
