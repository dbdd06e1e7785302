#include "platform/component/library_inspector.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace gorbex {
namespace {

// Libraries made without a reference to the base library carry copies of its interfaces.
bool IsBaseInterface(std::string_view guid) {
  constexpr std::array<std::string_view, 2> kBase = {"{00000000-0000-0000-C000-000000000046}",
                                                     "{00020400-0000-0000-C000-000000000046}"};
  return std::find(kBase.begin(), kBase.end(), guid) != kBase.end();
}

bool IsOwnInterface(const TypeInfo& type) {
  return (type.kind == TypeKind::Interface || type.kind == TypeKind::Dispatch) &&
         !type.guid.empty() && !IsBaseInterface(type.guid);
}

}  // namespace

std::string OwnInterfaceOf(const TypeLibrary& library) {
  for (const auto& type : library.types) {
    if (!type.defaultInterface) continue;
    const auto& interface = library.types[*type.defaultInterface];
    if (IsOwnInterface(interface)) return interface.guid;
  }
  const auto found = std::find_if(library.types.begin(), library.types.end(), IsOwnInterface);
  return found == library.types.end() ? std::string() : found->guid;
}

std::string LibraryInspector::InterfaceGuid(const std::string& componentFile,
                                            const std::string& defaultText) const {
  const auto library = Read(componentFile);
  const auto guid = library ? OwnInterfaceOf(*library) : std::string();
  return guid.empty() ? defaultText : guid;
}

}  // namespace gorbex
