#pragma once

#include <vector>

namespace gorbex::ui {

/// The needs of a column of a list; all widths in pixels.
struct ColumnNeed {
  int bare = 0;    ///< that it never falls below
  int least = 0;   ///< that is enough to read its heading and the beginning of its texts
  int wanted = 0;  ///< for its widest text
  int worth = 1;
  bool grows = false;  ///< takes more than it wants
};

/// The widths of columns that share the room. When it is scarce, the columns that are worth most
/// get their least widths first, and of what remains each gets as much more as it is worth. When
/// there is more than all want, those that grow share the rest.
[[nodiscard]] std::vector<int> ColumnWidthsFor(int room, const std::vector<ColumnNeed>& needs);

}  // namespace gorbex::ui
