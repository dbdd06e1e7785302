#include "freshness/reason.h"

#include <algorithm>
#include <array>

namespace gorbex {

std::string_view NameOf(Reason::Kind kind) {
  static constexpr std::array<std::string_view, 14> kNames = {
      "neverBuilt",    "binaryMissing", "binaryReplaced", "projectFile",       "member",
      "memberMissing", "reference",     "interface",      "compatibleBinary",  "compiler",
      "buildFolder",   "debug",         "version",        "breakCompatibility"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string ReasonsText(const std::vector<Reason>& reasons, std::size_t most) {
  std::string text;
  for (std::size_t i = 0; i < std::min(most, reasons.size()); ++i) {
    text.append(text.empty() ? "" : "; ").append(reasons[i].text);
  }
  if (reasons.size() > most) {
    text.append("; and ").append(std::to_string(reasons.size() - most)).append(" more");
  }
  return text;
}

}  // namespace gorbex
