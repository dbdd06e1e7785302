#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex::standin {

/// A property as a class declares it: a public variable, or procedures without further parameters.
struct DeclaredProperty {
  std::string name;
  std::string type;         ///< as written, without the name of a library; empty when none is said
  bool isVariable = false;  ///< open to whatever its type allows
  bool isReadable = false;
  bool isWritable = false;           ///< by assignment
  bool isSettable = false;           ///< by reference, as objects are
  std::optional<std::int32_t> id{};  ///< where the source gives one
};

/// A public enumeration. Constants whose values are expressions are left out.
struct DeclaredEnum {
  struct Constant {
    std::string name;
    std::int32_t value = 0;
  };
  std::string name;
  std::vector<Constant> constants;
};

struct Declarations {
  std::vector<DeclaredProperty> properties;
  std::vector<DeclaredEnum> enums;
};

/// The declarations in a source file that other projects can use.
[[nodiscard]] Declarations ReadDeclarations(std::string_view file);

}  // namespace gorbex::standin
