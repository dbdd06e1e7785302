#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// Why a project is to be built.
struct Reason {
  enum class Kind {
    NeverBuilt,
    BinaryMissing,
    BinaryReplaced,
    ProjectFile,
    Member,
    MemberMissing,
    Reference,
    Interface,
    CompatibleBinary,
    Compiler,
    BuildFolder,
    Debug,
    Version,
    BreakCompatibility,
  };

  Kind kind = Kind::NeverBuilt;
  std::string subject;  ///< a file, an identity or a version; may be empty
  std::string text;     ///< for the user, such as "Amount.cls changed"

  /// The full path of the used component that it is about, whose build may take the reason away;
  /// empty for other reasons.
  std::string component{};
};

/// As JSON names it, such as "neverBuilt".
[[nodiscard]] std::string_view NameOf(Reason::Kind kind);

/// The first reasons on one line, separated by semicolons, and how many more there are.
[[nodiscard]] std::string ReasonsText(const std::vector<Reason>& reasons, std::size_t most = 3);

}  // namespace gorbex
