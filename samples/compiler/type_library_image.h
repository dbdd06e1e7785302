#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiler/declarations.h"
#include "platform/component/type_library.h"

namespace gorbex::standin {

/// The types of values that properties have, by the system's own numbers.
enum class ValueType : std::uint16_t {
  Integer = 2,
  Long = 3,
  Single = 4,
  Double = 5,
  Currency = 6,
  Date = 7,
  Text = 8,
  Object = 9,
  Flag = 11,
  Variant = 12,
  Byte = 17
};

/// A function of an interface, with the number by which late binding asks for it.
struct LibraryMethod {
  using Kind = DeclaredMethod::Kind;
  struct Parameter {
    std::string name;
    ValueType type = ValueType::Variant;
    bool isByRef = false;
    bool isOptional = false;
  };

  Kind kind = Kind::Call;
  std::string name;
  std::vector<Parameter> parameters;
  std::optional<ValueType> result;
  std::int32_t id = 0;
  std::string help{};
};

struct LibraryField {
  std::string name;
  ValueType type = ValueType::Variant;
};

/// The members of a type: functions in a dual interface, constants in an enumeration,
/// fields in a record; and what a browser tells of the type.
struct LibraryMembers {
  std::vector<LibraryMethod> methods;
  std::vector<DeclaredEnum::Constant> constants;
  std::vector<LibraryField> fields;
  std::string help{};
};

/// The bytes of a 32-bit type library in the MSFT format: interfaces, dual interfaces (derived from
/// the IDispatch of stdole2.tlb), classes, enumerations and records. Members are in the order of
/// the types; those that are missing have none. The names of the library and its types must differ.
/// RuntimeError for what the format cannot hold.
[[nodiscard]] std::string TypeLibraryImage(const TypeLibrary& library,
                                           const std::vector<LibraryMembers>& members = {});

}  // namespace gorbex::standin
