#pragma once

#include <string>
#include <vector>

#include "core/text.h"

namespace gorbex {

/// The file names of paths: the first three, and how many others there are.
[[nodiscard]] std::string FileNames(const std::vector<std::string>& paths);

}  // namespace gorbex
