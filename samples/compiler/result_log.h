#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace gorbex::standin {

/// Why a project was not built. A problem while loading it ends without a "Build of" line.
struct Fault {
  enum class Stage { Load, Build };
  Stage stage = Stage::Load;
  std::string text;
};

[[nodiscard]] Fault FileNotFound(const std::string& path);
[[nodiscard]] Fault CouldNotBeLoaded(const std::string& path, const std::string& reason = {});
[[nodiscard]] Fault NotAReference(const std::string& value);
[[nodiscard]] Fault CompileError(const std::string& path, std::size_t line,
                                 const std::string& text);
[[nodiscard]] Fault BuildFault(const std::string& text);

[[nodiscard]] std::string Succeeded(const std::string& binary);
[[nodiscard]] std::string Failed(const std::string& binary);

/// Adds one result to the log, an empty line first.
void AppendResult(FileSystem& files, const std::string& log, const std::vector<std::string>& lines);

}  // namespace gorbex::standin
