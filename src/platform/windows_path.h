#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// The parts of a Windows path: its start, and the names below it with "." and ".." resolved.
struct ParsedPath {
  enum class Start { Drive, Share, CurrentFolder };

  Start start = Start::CurrentFolder;
  char drive = 0;                       ///< lower case; for Start::Drive
  std::size_t levelsUp = 0;             ///< leading ".." of a path in the current folder
  std::vector<std::string_view> names;  ///< views into the text; a share begins with its server
};

/// Takes a path apart. Nothing for an empty text and for a name that no Windows file can have.
[[nodiscard]] std::optional<ParsedPath> ParseWindowsPath(std::string_view text);

/// A path with "." and ".." resolved and "\" between its names; a relative one starts from the
/// folder. ".." leaves neither a drive nor a share; a drive without a folder ends with "\".
[[nodiscard]] std::string ResolvedPath(std::string_view folder, std::string_view path);

/// True for a character that a Windows file name may hold.
[[nodiscard]] bool IsNameCharacter(char character);

}  // namespace gorbex
