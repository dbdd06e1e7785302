#pragma once

#include <optional>
#include <string>

#include "platform/file_system.h"
#include "platform/registry.h"

namespace gorbex::standin {

/// The file registered for a type library; nothing when there is none.
[[nodiscard]] std::optional<std::string> RegisteredFile(const RegistryReader& registry,
                                                        const std::string& guid,
                                                        const std::string& version);

/// Makes the program at the path the machine's compiler, and supplies the system's own library
/// where that is missing.
[[nodiscard]] bool Install(FileSystem& files, Registry& registry, const std::string& program);

}  // namespace gorbex::standin
