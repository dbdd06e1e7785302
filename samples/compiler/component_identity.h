#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiler/declarations.h"
#include "compiler/identity.h"
#include "compiler/project.h"
#include "platform/component/type_library.h"

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

/// The type library of a project: for each class an interface "_Name" and a class "Name", then the
/// enumerations and records of all classes.
/// - No compatibility: every identity is new.
/// - Project compatibility: library and classes keep theirs, interfaces get new ones.
/// - Binary compatibility: everything that was there before keeps its identity.
/// Where there is nothing to keep, the two compatible modes take first identities. `kept` is what
/// was there before, in any mode.
[[nodiscard]] TypeLibrary ComponentLibrary(const Project& project,
                                           const std::vector<OfferedClass>& classes,
                                           const std::optional<TypeLibrary>& kept,
                                           const NewIdentities& identities);

}  // namespace gorbex::standin
