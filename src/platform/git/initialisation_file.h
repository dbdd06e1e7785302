#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/file_system.h"

namespace gorbex {

/// The entries of an initialisation file about a git working tree.
struct GitSettings {
  std::string worktree;  ///< Windows path of its top
  std::string remote = "origin";
  std::string branch{};  ///< empty for the one checked out
};

/// The Windows path of a path of the host, in UTF-8 as the host has it. Error 52 when it has none.
using HostPathReader = std::function<std::string(const std::string&)>;

/// The settings of the file's [git] section; nothing when it has none: the file belongs to another
/// client. Errors: those of reading the file, 5 for a section that lacks its working
/// tree, and for a file that is neither a text of the code page nor in UTF-8 with its mark. Where
/// the system has other paths, such as /srv/product, the reader takes them.
[[nodiscard]] std::optional<GitSettings> ReadGitSettings(const FileReader& files,
                                                         const std::string& path,
                                                         const HostPathReader& hostPath = {});

}  // namespace gorbex
