#pragma once

#include <string>
#include <vector>

#include "compiler/resource_section.h"

namespace gorbex::standin {

enum class ImageKind { Program, Library };

/// A loadable 32-bit image that carries the resources and does nothing when run.
[[nodiscard]] std::string ComponentImage(ImageKind kind, const std::vector<Resource>& resources);

}  // namespace gorbex::standin
