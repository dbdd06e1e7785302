#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/member.h"
#include "platform/content_hash.h"

namespace gorbex {

/// The two values that a debug build replaces for the time of the compile, as texts; empty where
/// the project file has none.
using DebugTexts = std::array<std::string, 2>;

/// The inputs of a compile, as the text of a project file names them.
struct ProjectSources {
  ContentHash text;  ///< of all lines except blank ones and those that a build changes
  DebugTexts debug;
  std::string version;                  ///< major.minor.revision
  std::vector<std::string> members;     ///< sources and the resource file, as written
  std::vector<std::string> companions;  ///< where binary parts of members would be
  std::vector<std::string> references;  ///< raw values of references and objects
  std::string compatibleBinary;         ///< as written; empty unless binary compatibility is kept
};

[[nodiscard]] ProjectSources ReadSources(std::string_view projectText);

/// The values during a debug build of a project with these values.
[[nodiscard]] DebugTexts WithDebug(const DebugTexts& own);

/// The full path of the file that a build of the project writes, into a folder or, when that is
/// empty, where the project itself has it built.
[[nodiscard]] std::string BuiltFile(const clsMember& project, const std::string& folder);

}  // namespace gorbex
