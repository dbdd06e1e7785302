#include "freshness/reason.h"

#include <array>

namespace gorbex {

std::string_view NameOf(Reason::Kind kind) {
  static constexpr std::array<std::string_view, 14> kNames = {
      "neverBuilt",    "binaryMissing", "binaryReplaced", "projectFile",       "member",
      "memberMissing", "reference",     "interface",      "compatibleBinary",  "compiler",
      "buildFolder",   "debug",         "version",        "breakCompatibility"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string ShortText(const std::vector<Reason>& reasons, std::size_t kinds) {
  std::string text;
  std::size_t at = 0;
  for (std::size_t shown = 0; shown < kinds && at < reasons.size(); ++shown) {
    const Reason& first = reasons[at];
    std::size_t same = 1;
    while (at + same < reasons.size() && reasons[at + same].kind == first.kind) ++same;
    text.append(text.empty() ? "" : "; ").append(first.text);
    if (same > 1) text.append(" (and ").append(std::to_string(same - 1)).append(" more)");
    at += same;
  }
  if (at < reasons.size()) {
    text.append("; and ").append(std::to_string(reasons.size() - at)).append(" more");
  }
  return text;
}

}  // namespace gorbex
