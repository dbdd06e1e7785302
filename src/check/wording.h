#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// "1 project uses it" or "38 projects use it".
[[nodiscard]] std::string Counted(std::size_t number, std::string_view one, std::string_view many);

/// The file names of paths: the first three, and how many others there are.
[[nodiscard]] std::string FileNames(const std::vector<std::string>& paths);

}  // namespace gorbex
