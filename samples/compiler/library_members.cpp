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

LibraryProperty Typed(const DeclaredProperty& declared, const IsEnum& isEnum) {
  LibraryProperty property{declared.name, TypeNamed(declared.type, isEnum)};
  property.help = declared.text;
  const bool isVariable = declared.isVariable;
  const bool holdsObjects =
      property.type == ValueType::Object || property.type == ValueType::Variant;
  property.isReadable = isVariable || declared.isReadable;
  property.isWritable = declared.isWritable || (isVariable && property.type != ValueType::Object);
  property.isSettable = declared.isSettable || (isVariable && holdsObjects);
  return property;
}

// Numbers are given in the order of the source, as the real compiler does.
std::vector<LibraryProperty> PropertiesOf(const Declarations& declarations, const IsEnum& isEnum) {
  constexpr std::int32_t kFirstId = 0x68030000;
  std::vector<LibraryProperty> properties;
  for (const auto& declared : declarations.properties) {
    const auto number = static_cast<std::int32_t>(properties.size());
    properties.push_back(Typed(declared, isEnum));
    properties.back().id = declared.id.value_or(kFirstId + number);
  }
  return properties;
}

LibraryMethod::Kind KindOf(DeclaredMethod::Kind kind) {
  switch (kind) {
    case DeclaredMethod::Kind::Get:
      return LibraryMethod::Kind::Get;
    case DeclaredMethod::Kind::Let:
      return LibraryMethod::Kind::Put;
    case DeclaredMethod::Kind::Set:
      return LibraryMethod::Kind::PutReference;
    case DeclaredMethod::Kind::Call:
      break;
  }
  return LibraryMethod::Kind::Call;
}

LibraryMethod Typed(const DeclaredMethod& declared, const IsEnum& isEnum) {
  LibraryMethod method{KindOf(declared.kind), declared.name, {}, {}, 0, declared.text};
  for (const auto& each : declared.parameters) {
    method.parameters.push_back(
        {each.name, TypeNamed(each.type, isEnum), each.isByRef, each.isOptional});
  }
  if (declared.result) method.result = TypeNamed(*declared.result, isEnum);
  return method;
}

// The procedures of one property share a number.
std::vector<LibraryMethod> MethodsOf(const Declarations& declarations, const IsEnum& isEnum) {
  constexpr std::int32_t kFirstId = 0x60030000;
  std::vector<LibraryMethod> methods;
  for (const auto& declared : declarations.methods) {
    auto method = Typed(declared, isEnum);
    const auto known = std::find_if(
        methods.begin(), methods.end(),
        [&](const LibraryMethod& other) { return EqualsIgnoringCase(other.name, declared.name); });
    const auto number = static_cast<std::int32_t>(methods.size());
    method.id = known != methods.end() ? known->id : declared.id.value_or(kFirstId + number);
    methods.push_back(std::move(method));
  }
  return methods;
}

const DeclaredRecord* FindRecord(const std::vector<OfferedClass>& classes, std::string_view name) {
  for (const auto& offered : classes) {
    for (const auto& each : offered.declarations.records) {
      if (EqualsIgnoringCase(each.name, name)) return &each;
    }
  }
  return nullptr;
}

const DeclaredEnum* FindEnum(const std::vector<OfferedClass>& classes, std::string_view name) {
  for (const auto& offered : classes) {
    for (const auto& each : offered.declarations.enums) {
      if (EqualsIgnoringCase(each.name, name)) return &each;
    }
  }
  return nullptr;
}

std::vector<LibraryConstant> ConstantsOf(const DeclaredEnum& declared) {
  std::vector<LibraryConstant> constants;
  constants.reserve(declared.constants.size());
  for (const auto& each : declared.constants) constants.push_back({each.name, each.value});
  return constants;
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
      members[i].properties = PropertiesOf(declarations, isEnum);
      members[i].methods = MethodsOf(declarations, isEnum);
    } else if (type.kind == TypeKind::Coclass) {
      members[i].help = classes.at(next++).declarations.events;
    } else if (type.kind == TypeKind::Enum) {
      if (const auto* declared = FindEnum(classes, type.name)) {
        members[i].constants = ConstantsOf(*declared);
        members[i].help = declared->expressions;
      }
    } else if (const auto* declared = FindRecord(classes, type.name)) {
      for (const auto& field : declared->fields) {
        members[i].fields.push_back({field.name, TypeNamed(field.type, isEnum)});
      }
      members[i].help = declared->text;
    }
  }
  return members;
}

}  // namespace gorbex::standin
