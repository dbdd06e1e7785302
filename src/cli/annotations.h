#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "check/finding.h"
#include "cli/frame.h"

namespace gorbex::cli {

/// A remark for a build server to show beside the file. Texts are UTF-8.
struct Annotation {
  Severity severity = Severity::Error;
  std::string file;                   ///< of the host; empty for none
  std::optional<std::size_t> line{};  ///< from 1
  std::string id;                     ///< what kind of remark it is
  std::string text;
};

/// The command, with its line end, by which a build server takes a remark; empty where none runs.
[[nodiscard]] std::string AnnotationLine(CiSystem system, const Annotation& annotation);

/// Gives a remark to the build server that runs this program, if any.
void Annotate(const Frame& frame, const Annotation& annotation);

}  // namespace gorbex::cli
