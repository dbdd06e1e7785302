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

/// What the compiler makes a binary of, as the text of a project file names it.
struct ProjectSources {
  ContentHash text;  ///< of all lines but blank ones, and but those that a build itself changes
  DebugTexts debug;
  std::string version;                  ///< major.minor.revision
  std::vector<std::string> members;     ///< sources and the resource file, as written
  std::vector<std::string> companions;  ///< where binary parts of members would be
  std::vector<std::string> references;  ///< raw values of references and objects
  std::string compatibleBinary;         ///< as written; empty unless binary compatibility is kept
};

[[nodiscard]] ProjectSources ReadSources(std::string_view projectText);

/// The debug values that a debug build gives a project which has those given.
[[nodiscard]] DebugTexts WithDebug(const DebugTexts& own);

/// The full path of the file that a build of the project writes, into a folder or, when that is
/// empty, where the project itself has it built.
[[nodiscard]] std::string BuiltFile(const clsMember& project, const std::string& folder);

}  // namespace gorbex
