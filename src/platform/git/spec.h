#pragma once

#include <string>
#include <string_view>

namespace gorbex {

/// The path below the working tree's top of a "$/" spec, with "/" between its names; empty for the
/// top itself. Error 52 for a spec that could lead out of the tree or into git's own folder.
[[nodiscard]] std::string PathOfSpec(const std::string& spec);

/// True for a name that a spec and a Windows path can spell.
[[nodiscard]] bool IsItemName(std::string_view name);

}  // namespace gorbex
