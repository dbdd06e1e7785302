#pragma once

#include <string>
#include <string_view>

#include "core/appearance.h"
#include "core/procedure.h"
#include "core/registry_tools.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

// The verdicts on what InvalidReference marks.
inline constexpr std::string_view kInvalidGuid = "Invalid GUID";
inline constexpr std::string_view kNoPath = "No Path for this GUID in registry";

/// The registry's answer about one reference.
struct Verdict {
  Image image = Image::None;
  std::string text;
  std::string registryPath;  ///< lower case; empty when the GUID is not registered
};

/// Checks references against the registry. Nothing is cached: every call reads the registry and the
/// file system again. GUIDs carry their braces.
class ReferenceResolution {
 public:
  ReferenceResolution(const RegistryTools& registry, const FileReader& files,
                      const ComponentInspector& components, ErrorReport& report)
      : registry_(registry), files_(files), components_(components), report_(report) {}

  /// True when a type library of that GUID is registered.
  [[nodiscard]] bool IsvalidRef(std::string_view guid) const;

  /// Whether the library is registered in that version, and whether its file exists and is the
  /// component that the project names.
  [[nodiscard]] Verdict RefType(std::string_view guid, std::string_view version,
                                std::string_view componentPath) const;

  /// The component file of a reference value; empty after an error.
  [[nodiscard]] std::string GetRefComponent(std::string_view referenceValue) const;

  /// The new GUID of a library whose old one is no longer registered; empty when nothing changed.
  [[nodiscard]] std::string GUIDChanged(const std::string& referenceValue) const;

 private:
  [[nodiscard]] std::string LibraryPath(std::string_view guid, std::string_view version) const;

  const RegistryTools& registry_;
  const FileReader& files_;
  const ComponentInspector& components_;
  ErrorReport& report_;
};

}  // namespace gorbex
