#include "cli/progress_rows.h"

#include "cli/text_output.h"

namespace gorbex::cli {
namespace {

constexpr std::size_t kMostRows = 16;  // a terminal scrolls the first of too many away

// Only what is in one row of the terminal can be erased.
void CutToRow(std::string& row) {
  constexpr std::size_t kColumns = 79;
  const auto isPartOfCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
  };
  while (Width(row) > kColumns) {
    while (isPartOfCharacter(row.back())) row.pop_back();
    row.pop_back();
  }
}

}  // namespace

// Blanks erase the rows before: not every console knows a code for that.
void ProgressRows::Show(std::vector<std::string> rows) {
  if (rows.size() > (movesCursor_ ? kMostRows : 1)) rows.resize(movesCursor_ ? kMostRows : 1);
  std::string text;
  for (auto width = widths_.rbegin(); width != widths_.rend(); ++width) {
    text += "\r" + std::string(*width, ' ') + "\r";
    if (width + 1 != widths_.rend()) text += "\x1b[1A";
  }
  widths_.clear();
  for (std::string& row : rows) {
    CutToRow(row);
    if (!widths_.empty()) text += '\n';
    text += row;
    widths_.push_back(Width(row));
  }
  if (!text.empty()) terminal_ << text << std::flush;
}

}  // namespace gorbex::cli
