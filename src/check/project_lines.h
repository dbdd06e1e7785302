#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace gorbex {

/// One "key=value" line of a project file.
struct ProjectLine {
  enum class Kind { Source, Resource, Reference, Control, Other };

  Kind kind = Kind::Other;
  std::size_t number = 0;  ///< from 1
  std::string_view key;
  std::string_view value;  ///< without quotes; of a source, its file

  [[nodiscard]] bool IsReference() const {
    return kind == Kind::Reference || kind == Kind::Control;
  }
};

/// The lines up to the first section, with any line end. They are views into the text.
[[nodiscard]] std::vector<ProjectLine> LinesOf(std::string_view projectText);

}  // namespace gorbex
