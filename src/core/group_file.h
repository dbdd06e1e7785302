#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace gorbex {

/// The full paths of the projects that a group file (.vbg) of that path and text names, each once
/// in file order.
[[nodiscard]] std::vector<std::string> ProjectsInGroup(const std::string& groupPath,
                                                       std::string_view text);

/// Why no path can name a file or folder.
inline constexpr std::string_view kUnreachableName =
    "its name holds a character that is not in the system's code page, or in no Windows path";

/// Full paths, sorted without regard to letter case.
struct FoundProjects {
  std::vector<std::string> projects;
  std::vector<std::string> unreachable;  ///< projects and folders that no path can name
};

/// All .vbp files in a folder and below it. Links to folders are not followed. Errors as
/// FileReader::List for the folder itself; a folder below it that cannot be read is passed over.
[[nodiscard]] FoundProjects ProjectsInFolder(const FileReader& files, const std::string& folder);

/// A text whose line feeds all have a carriage return before them.
[[nodiscard]] std::string WithCrLf(std::string_view text);

}  // namespace gorbex
