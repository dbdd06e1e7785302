#pragma once

#include <string_view>

namespace gorbex {

/// Whether a file is a source of a project by its extension, in any letter case.
[[nodiscard]] bool IsSourceName(std::string_view file);

/// Whether a file is a source, a project, a group or a build project by its extension. The system
/// opens such a file in an editor; files of other names could be programs.
[[nodiscard]] bool IsDocumentName(std::string_view file);

/// Whether a command may replace a file with its output. False for the documents of IsDocumentName,
/// and for a component, a program or a registry file.
[[nodiscard]] bool IsOutputName(std::string_view file);

}  // namespace gorbex
