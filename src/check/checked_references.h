#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/finding.h"

namespace gorbex {

class CheckedGroup;
struct CheckedProject;

/// A component that projects reference in one version.
struct CheckedReference {
  enum class State {
    Registered,
    FileMissing,  ///< registered with a file that is not there
    Only64Bit,    ///< registered for 64-bit programs, not for 32-bit ones
    Unregistered,
    NoIdentity  ///< the line is damaged
  };

  struct Use {
    const CheckedProject* project;
    std::size_t line;
    std::string file;                ///< the component file as the line names it
    const CheckedProject* producer;  ///< the project of the group that builds it; null for none
  };

  State state = State::Registered;
  std::string name{};        ///< such as "Core.dll {GUID} 1.0"
  std::string registered{};  ///< the file; empty unless one is registered
  bool isFileKnown = false;  ///< the registered file has a full path that can be looked at
  std::vector<Use> uses{};

  /// The projects whose reference nothing in this run will register.
  [[nodiscard]] std::vector<const Use*> UsesNotBuilt() const;

  /// A finding about it and the projects of these uses, at least one. Their number is added to the
  /// text.
  [[nodiscard]] Finding FindingOn(const std::vector<const Use*>& concerned,
                                  const std::string& text) const;
};

/// Every reference of the group once, in the order of the projects, without references to project
/// files.
[[nodiscard]] std::vector<CheckedReference> ReferencesOf(CheckedGroup& group);

}  // namespace gorbex
