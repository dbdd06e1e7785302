#pragma once

#include <string>

namespace gorbex {

/// The folder of the program's own file, without a separator at its end.
[[nodiscard]] std::wstring OwnFolder();

/// A path in the code page, which programs without Unicode understand as well, for a folder of any
/// name: the folder's own or its short path. Where the system keeps no short names it is the path
/// of another folder, which this makes below the data of all users' programs. Error 76 or 75 when
/// that cannot be made.
[[nodiscard]] std::string SpelledFolder(const std::wstring& folder);

}  // namespace gorbex
