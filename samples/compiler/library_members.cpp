#include "compiler/library_members.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"

namespace gorbex::standin {
namespace {

struct TypeName {
  std::string_view name;
  ValueType type;
};

constexpr std::array kTypeNames = {
    TypeName{"", ValueType::Variant},        TypeName{"Boolean", ValueType::Flag},
    TypeName{"Byte", ValueType::Byte},       TypeName{"Currency", ValueType::Currency},
    TypeName{"Date", ValueType::Date},       TypeName{"Double", ValueType::Double},
    TypeName{"Integer", ValueType::Integer}, TypeName{"Long", ValueType::Long},
    TypeName{"OLE_COLOR", ValueType::Long},  TypeName{"Single", ValueType::Single},
    TypeName{"String", ValueType::Text},     TypeName{"Variant", ValueType::Variant},
};

ValueType TypeNamed(std::string_view name, const IsEnum& isEnum) {
  for (const auto& known : kTypeNames) {
    if (EqualsIgnoringCase(known.name, name)) return known.type;
  }
  return isEnum(name) ? ValueType::Long : ValueType::Object;
}

// Numbers are given in the order of the source, as the real compiler does. Each way in which a
// property may be used is a function.
void AddProperties(std::vector<LibraryMethod>& methods, const Declarations& declarations,
                   const IsEnum& isEnum) {
  using Kind = LibraryMethod::Kind;
  std::int32_t nextId = 0x68030000;
  for (const auto& declared : declarations.properties) {
    const auto id = declared.id.value_or(nextId);
    ++nextId;
    const auto type = TypeNamed(declared.type, isEnum);
    const bool isVariable = declared.isVariable;
    const bool isObject = type == ValueType::Object;
    if (isVariable || declared.isReadable) {
      methods.push_back({Kind::Get, declared.name, {}, type, id, declared.text});
    }
    const auto addWriter = [&](Kind kind) {
      methods.push_back({kind, declared.name, {{"", type}}, {}, id, declared.text});
    };
    if (declared.isWritable || (isVariable && !isObject)) addWriter(Kind::Let);
    const bool holdsObjects = isObject || type == ValueType::Variant;
    if (declared.isSettable || (isVariable && holdsObjects)) addWriter(Kind::Set);
  }
}

LibraryMethod Typed(const DeclaredMethod& declared, const IsEnum& isEnum) {
  LibraryMethod method{declared.kind, declared.name, {}, {}, 0, declared.text};
  for (const auto& [field, isByRef, isOptional] : declared.parameters) {
    method.parameters.push_back({field.name, TypeNamed(field.type, isEnum), isByRef, isOptional});
  }
  if (declared.result) method.result = TypeNamed(*declared.result, isEnum);
  return method;
}

// The procedures of one property share a number.
void AddMethods(std::vector<LibraryMethod>& methods, const Declarations& declarations,
                const IsEnum& isEnum) {
  const auto first = static_cast<std::ptrdiff_t>(methods.size());
  std::int32_t nextId = 0x60030000;
  for (const auto& declared : declarations.methods) {
    auto method = Typed(declared, isEnum);
    const auto known = std::find_if(
        methods.begin() + first, methods.end(),
        [&](const LibraryMethod& other) { return EqualsIgnoringCase(other.name, declared.name); });
    method.id = known != methods.end() ? known->id : declared.id.value_or(nextId);
    ++nextId;
    methods.push_back(std::move(method));
  }
}

template <class Declared>
const Declared* Find(const std::vector<OfferedClass>& classes,
                     std::vector<Declared> Declarations::*declared, std::string_view name) {
  for (const auto& offered : classes) {
    for (const auto& each : offered.declarations.*declared) {
      if (EqualsIgnoringCase(each.name, name)) return &each;
    }
  }
  return nullptr;
}

}  // namespace

std::vector<LibraryMembers> MembersOf(const std::vector<OfferedClass>& classes,
                                      const TypeLibrary& library, const IsEnum& isEnum) {
  std::vector<LibraryMembers> members(library.types.size());
  std::size_t next = 0;
  for (std::size_t i = 0; i < members.size(); ++i) {
    const auto& type = library.types[i];
    if (type.kind == TypeKind::Dispatch) {
      const auto& declarations = classes.at(next).declarations;
      AddProperties(members[i].methods, declarations, isEnum);
      AddMethods(members[i].methods, declarations, isEnum);
    } else if (type.kind == TypeKind::Coclass) {
      members[i].help = classes.at(next++).declarations.events;
    } else if (type.kind == TypeKind::Enum) {
      if (const auto* declared = Find(classes, &Declarations::enums, type.name)) {
        members[i].constants = declared->constants;
        members[i].help = declared->expressions;
      }
    } else if (const auto* declared = Find(classes, &Declarations::records, type.name)) {
      for (const auto& field : declared->fields) {
        members[i].fields.push_back({field.name, TypeNamed(field.type, isEnum)});
      }
      members[i].help = declared->text;
    }
  }
  return members;
}

}  // namespace gorbex::standin
