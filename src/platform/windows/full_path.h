#pragma once

#include <optional>
#include <string>

namespace gorbex {

/// The full path of a file or folder, as the system's calls take it. Nothing for a path that no
/// file can have.
[[nodiscard]] std::optional<std::wstring> FullPathOf(const std::string& path);

/// True for a full path that names a device ("C:\\x\\nul" is one) or a pipe, not a file.
[[nodiscard]] bool IsDevice(const std::wstring& fullPath);

/// True when the full path names a file that is there.
[[nodiscard]] bool IsFile(const std::wstring& fullPath);

/// The path of this program's file.
[[nodiscard]] std::wstring OwnFile();

}  // namespace gorbex
