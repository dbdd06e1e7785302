#pragma once

#include <string>
#include <string_view>

#include "compiler/declarations.h"
#include "compiler/project.h"

namespace gorbex::standin {

/// A class or control that a component offers.
struct OfferedClass {
  std::string name;
  bool isControl = false;
  bool isCreatable = true;
  Declarations declarations{};
};

/// The contents of an item's source file. The name is the source's own; a source without one has
/// that of the project's line.
[[nodiscard]] OfferedClass ReadOffer(const ProjectItem& item, std::string_view source);

/// True for a name that projects and classes may bear: a letter, then at most 39 word characters.
[[nodiscard]] bool IsName(std::string_view text);

}  // namespace gorbex::standin
