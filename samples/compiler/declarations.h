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
  std::string text{};                ///< the declarations as written
};

/// A name and its type, as written.
struct DeclaredField {
  std::string name;
  std::string type;
};

/// A procedure of a class: a method, or a property with parameters.
struct DeclaredMethod {
  enum class Kind : std::uint16_t { Call = 1, Get = 2, Let = 4, Set = 8 };  ///< as libraries say it
  struct Parameter {
    DeclaredField field;  ///< without a name when its declaration is not understood
    bool isByRef = true;
    bool isOptional = false;
  };

  Kind kind = Kind::Call;
  std::string name;
  std::vector<Parameter> parameters{};
  std::optional<std::string> result{};  ///< its type, empty when none is said; nothing for a Sub
  std::optional<std::int32_t> id{};     ///< where the source gives one
  std::string text{};                   ///< the declaration as written
};

/// A public record.
struct DeclaredRecord {
  std::string name;
  std::vector<DeclaredField> fields;
  std::string text{};  ///< the declarations of the fields as written
};

/// A public enumeration. Constants whose values are expressions are among its expressions only.
struct DeclaredEnum {
  struct Constant {
    std::string name;
    std::int32_t value = 0;
  };
  std::string name;
  std::vector<Constant> constants;
  std::string expressions{};
};

struct Declarations {
  std::vector<DeclaredProperty> properties;
  std::vector<DeclaredMethod> methods;
  std::vector<DeclaredEnum> enums;
  std::vector<DeclaredRecord> records;
  std::string events;  ///< and the interfaces that the class implements, as written
};

/// The declarations in a source file that other projects can use.
[[nodiscard]] Declarations ReadDeclarations(std::string_view file);

}  // namespace gorbex::standin
