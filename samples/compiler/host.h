#pragma once

#include <memory>
#include <string>
#include <vector>

#include "compiler/component_image.h"
#include "platform/host.h"

namespace gorbex::standin {

/// The system that the compiler runs on.
[[nodiscard]] std::unique_ptr<Host> MakeHost();

/// A built file of that kind, before it gets its resources.
[[nodiscard]] std::string Image(ImageKind kind);

/// The program's arguments in UTF-8, without its name.
[[nodiscard]] std::vector<std::string> Arguments(int count, char** values);

}  // namespace gorbex::standin
