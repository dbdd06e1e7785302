#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace gorbex::cli {

/// Rows at the end of a terminal that change while a command works.
class ProgressRows {
 public:
  /// On a terminal without codes that move the cursor only the first row is shown.
  ProgressRows(std::ostream& terminal, bool movesCursor)
      : terminal_(terminal), movesCursor_(movesCursor) {}

  /// Shows rows (UTF-8) in the place of the former ones; each is cut to one row of the terminal.
  void Show(std::vector<std::string> rows);
  void Clear() { Show({}); }

 private:
  std::ostream& terminal_;
  bool movesCursor_;
  std::vector<std::size_t> widths_;  ///< of the rows that are shown
};

}  // namespace gorbex::cli
