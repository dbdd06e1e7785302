#pragma once

#include <string>

namespace gorbex::standin {

enum class ImageKind { Program, Library };

/// A loadable 32-bit image that holds no resources and does nothing when run.
[[nodiscard]] std::string EmptyImage(ImageKind kind);

}  // namespace gorbex::standin
