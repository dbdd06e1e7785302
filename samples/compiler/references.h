#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "compiler/project.h"
#include "compiler/result_log.h"
#include "platform/component/type_library.h"
#include "platform/file_system.h"
#include "platform/registry.h"

namespace gorbex::standin {

/// The file that the item's reference or control leads to on this machine; nothing when it is not
/// registered.
[[nodiscard]] std::optional<std::string> RegisteredFileOf(const RegistryReader& registry,
                                                          const ProjectItem& item);

/// The library that the item's reference or control leads to on this machine, if it can be read.
[[nodiscard]] std::optional<TypeLibrary> LibraryOf(const FileReader& files,
                                                   const RegistryReader& registry,
                                                   const ProjectItem& item);

/// The first reference or control of the item that this machine cannot supply.
[[nodiscard]] std::optional<Fault> CheckReference(const FileReader& files,
                                                  const RegistryReader& registry,
                                                  const Project& project, const ProjectItem& item);

}  // namespace gorbex::standin
