#pragma once

#include <optional>
#include <vector>

#include "compiler/component_classes.h"
#include "compiler/identity.h"
#include "compiler/project.h"
#include "platform/component/type_library.h"

namespace gorbex::standin {

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
