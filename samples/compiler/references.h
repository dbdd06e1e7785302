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

/// A type library as a project names it.
struct LibraryReference {
  std::string guid;
  std::string version;  ///< as the registry writes it: hexadecimal
  std::string file;
};

/// `*\G{GUID}#2e.0#0#path#description`; nothing when a field is missing or malformed.
[[nodiscard]] std::optional<LibraryReference> ParseReference(std::string_view value);

/// `{GUID}#2.0#0; FILE.OCX`, whose version is decimal.
[[nodiscard]] std::optional<LibraryReference> ParseObject(std::string_view value);

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
