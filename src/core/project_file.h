#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/member.h"

namespace gorbex {

/// The contents of a .vbp file: the record, and the lines that no rule of the program reads.
struct ProjectFile {
  clsMember member;
  std::vector<std::string> properties;  ///< "key=value", key as written
};

/// Takes the text of a project file apart in one pass. `path` is the file's own Windows path.
[[nodiscard]] ProjectFile ParseProjectFile(const std::string& path, std::string_view text);

/// The source-control spec in the text of a binding file; empty when it names none.
[[nodiscard]] std::string BoundProject(std::string_view bindingText);

/// Why a key=value text cannot be read line by line: its lines end with LF only, or with CR
/// only. Nothing when they can.
[[nodiscard]] std::optional<std::string> LineEndProblem(std::string_view text);

/// Why the first line of a key=value text cannot be read: it begins with a UTF-8 byte order mark.
/// Nothing when it does not.
[[nodiscard]] std::optional<std::string> ByteOrderMarkProblem(std::string_view text);

/// Why the compiler cannot load a project file of this text; nothing when it looks sound.
[[nodiscard]] std::optional<std::string> ProjectFileProblem(std::string_view text);

}  // namespace gorbex
