#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace gorbex {

// A reference value is the text after "reference=" or "object=" in a project file: fields
// separated by "#". Type libraries begin with "*\", control libraries with their GUID.

/// The first "{" up to the first "}" after it, both included; empty when either is missing.
[[nodiscard]] std::string_view GetGUID(std::string_view text);

/// A field by 0-based number. Error 9 when the value has fewer.
[[nodiscard]] std::string_view ReferenceField(std::string_view value, std::size_t number);

[[nodiscard]] bool IsTypeLibraryReference(std::string_view value);

/// The project file that a reference leads to instead of a library ("*\A..\Core\Core.vbp"); nothing
/// for others.
[[nodiscard]] std::optional<std::string_view> ProjectFileOf(std::string_view value);

/// The component file a reference value names; empty for a control line that names none. Error 9
/// when the value has too few fields.
[[nodiscard]] std::string_view ComponentPath(std::string_view value);

/// The name people use for the component: its description, or else the name of its file. Empty
/// when the value has neither.
[[nodiscard]] std::string_view ReferenceTitle(std::string_view value);

}  // namespace gorbex
