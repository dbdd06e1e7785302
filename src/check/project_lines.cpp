#include "check/project_lines.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

using Kind = ProjectLine::Kind;

Kind KindOf(std::string_view key) {
  static constexpr std::array<std::pair<std::string_view, Kind>, 10> kKinds = {
      {{"Class", Kind::Source},
       {"Form", Kind::Source},
       {"Module", Kind::Source},
       {"UserControl", Kind::Source},
       {"PropertyPage", Kind::Source},
       {"UserDocument", Kind::Source},
       {"Designer", Kind::Source},
       {"Reference", Kind::Reference},
       {"Object", Kind::Control},
       {"ResFile32", Kind::Resource}}};
  const auto* found = std::ranges::find_if(kKinds, [&](const auto& row) {
    return row.first.size() == key.size() && EqualsIgnoringCase(row.first, key);
  });
  return found == kKinds.end() ? Kind::Other : found->second;
}

std::string_view Unquoted(std::string_view value) {
  value = TrimBlanks(value);
  if (value.starts_with('"')) value.remove_prefix(1);
  if (value.ends_with('"')) value.remove_suffix(1);
  return value;
}

// "Module=modMain; modMain.bas" and "Form=frmMain.frm" both name a file.
std::string_view FileIn(std::string_view value) {
  const auto mark = value.find(';');
  return mark == std::string_view::npos ? value : Unquoted(value.substr(mark + 1));
}

// The set search of the library calls a function for every letter.
std::size_t LengthOfLine(std::string_view text) {
  const auto* end =
      std::ranges::find_if(text, [](char letter) { return letter == '\r' || letter == '\n'; });
  return static_cast<std::size_t>(end - text.begin());
}

}  // namespace

std::vector<ProjectLine> LinesOf(std::string_view projectText) {
  std::vector<ProjectLine> lines;
  std::size_t number = 0;
  while (!projectText.empty()) {
    const std::string_view line = projectText.substr(0, LengthOfLine(projectText));
    projectText.remove_prefix(line.size());
    projectText.remove_prefix(projectText.starts_with(kLineBreak) ? 2 : !projectText.empty());
    ++number;
    if (line.starts_with('[')) break;
    const auto mark = line.find('=');
    if (mark == std::string_view::npos) continue;
    const auto key = TrimBlanks(line.substr(0, mark));
    const Kind kind = KindOf(key);
    const auto value = Unquoted(line.substr(mark + 1));
    lines.push_back({kind, number, key, kind == Kind::Source ? FileIn(value) : value});
  }
  return lines;
}

}  // namespace gorbex
