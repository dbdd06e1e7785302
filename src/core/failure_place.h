#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace gorbex {

/// Where a compile failed, for people and programs that go there.
struct FailurePlace {
  std::string file;                   ///< a source, or the project file when no source is known
  std::optional<std::size_t> line{};  ///< of that file, from 1; nothing when it is not known
  std::string text{};                 ///< why, in one line; never empty
};

/// The place that the compiler's words name; a relative file is looked for from the project's
/// folder. `problem` says why it wrote nothing, when that is known. A source that cannot be read is
/// not named, because nobody can go there.
[[nodiscard]] FailurePlace PlaceOfFailure(const FileReader& files, const std::string& project,
                                          const std::string& log, const std::string& problem);

/// The text to print after the place's file, so that terminals, build servers and editors recognise
/// the place: "(21): error: Next without For". A place without a line gets line 1.
[[nodiscard]] std::string FailureText(const FailurePlace& place);

/// The line of a source file, from 1, where the compiler counts a line from 0: it counts neither
/// the header nor attributes. Nothing when the file ends before it.
[[nodiscard]] std::optional<std::size_t> LineInFile(std::string_view source, std::size_t codeLine);

}  // namespace gorbex
