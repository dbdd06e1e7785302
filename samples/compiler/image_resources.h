#pragma once

#include <string>
#include <vector>

#include "compiler/resource_section.h"

namespace gorbex::standin {

/// The image of a program or library (PE32 or PE32+) with a section that holds the resources.
/// RuntimeError when it has resources already, or no room for a section more.
[[nodiscard]] std::string WithResources(std::string image, const std::vector<Resource>& resources);

}  // namespace gorbex::standin
