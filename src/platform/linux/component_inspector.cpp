#include "platform/linux/component_inspector.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <exception>
#include <string_view>

#include "platform/linux/pe_image.h"

namespace gorbex {
namespace {

struct LibraryPlace {
  std::string file;
  std::optional<std::uint16_t> resource;
};

// Takes a resource number off a path that names no file as it stands.
LibraryPlace PlaceOf(const FileReader& files, const std::string& path) {
  const auto separator = path.find_last_of("\\/");
  if (separator == std::string::npos || FileExists(files, path)) return {path, std::nullopt};
  std::uint16_t number = 0;
  const char* const first = path.data() + separator + 1;
  const char* const end = path.data() + path.size();
  const auto [stop, error] = std::from_chars(first, end, number);
  if (error != std::errc() || stop != end) return {path, std::nullopt};
  return {path.substr(0, separator), number};
}

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

// Empty when the library defines no interface.
std::string OwnInterface(const TypeLibrary& library) {
  for (const auto& type : library.types) {
    if (!type.defaultInterface) continue;
    const auto& interface = library.types[*type.defaultInterface];
    if (IsOwnInterface(interface)) return interface.guid;
  }
  const auto found = std::find_if(library.types.begin(), library.types.end(), IsOwnInterface);
  return found == library.types.end() ? std::string() : found->guid;
}

}  // namespace

std::optional<TypeLibrary> TypeLibraryOf(const FileReader& files,
                                         const std::string& componentFile) {
  try {
    const auto place = PlaceOf(files, componentFile);
    const auto bytes = files.Read(place.file);
    if (!place.resource) {
      if (auto library = ReadTypeLibrary(bytes)) return library;
    }
    const auto resource = FindPeResource(bytes, "TYPELIB", place.resource);
    return resource ? ReadTypeLibrary(*resource) : std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::string LinuxComponentInspector::InterfaceGuid(const std::string& componentFile,
                                                   const std::string& defaultText) const {
  const auto library = TypeLibraryOf(files_, componentFile);
  const auto guid = library ? OwnInterface(*library) : std::string();
  return guid.empty() ? defaultText : guid;
}

}  // namespace gorbex
