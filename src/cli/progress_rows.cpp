#include "cli/progress_rows.h"

#include <algorithm>

#include "cli/text_output.h"

namespace gorbex::cli {
namespace {

// Only what is in one row of the terminal can be erased.
void CutToRow(std::string& row, std::size_t columns) {
  const auto isPartOfCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
  };
  while (Width(row) >= std::max<std::size_t>(columns, 1)) {
    while (isPartOfCharacter(row.back())) row.pop_back();
    row.pop_back();
  }
}

}  // namespace

// Without codes, blanks erase: not every console knows any.
void ProgressRows::Erase(std::string& text) {
  for (auto width = widths_.rbegin(); width != widths_.rend(); ++width) {
    text += streams_.movesCursor ? "\r\x1b[K" : "\r" + std::string(*width, ' ') + "\r";
    if (width + 1 != widths_.rend()) text += "\x1b[1A";
  }
  widths_.clear();
}

void ProgressRows::Show(std::vector<std::string> rows) {
  constexpr std::size_t kMostRows = 16;
  constexpr std::size_t kMostColumns = 80;
  const TerminalSize size = streams_.terminalSize ? streams_.terminalSize() : TerminalSize{};
  const std::size_t room = std::clamp<std::size_t>(size.rows, 2, kMostRows + 1) - 1;
  rows.resize(std::min(rows.size(), streams_.movesCursor ? room : 1));
  std::string text;
  Erase(text);
  for (std::string& row : rows) {
    CutToRow(row, std::min(size.columns, kMostColumns));
    if (!widths_.empty()) text += '\n';
    text += row;
    widths_.push_back(Width(row));
  }
  if (!text.empty()) streams_.err << text << std::flush;
}

}  // namespace gorbex::cli
