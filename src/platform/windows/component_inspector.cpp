#include "platform/windows/component_inspector.h"

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

#include "platform/windows/com_pointer.h"
#include "platform/windows/full_path.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

// The loader takes a text that names no file for the name of something else, which it would run or
// fetch: it gets only full paths of files.
ComPointer<ITypeLib> Load(const FileReader& files, const std::string& componentFile) {
  ComPointer<ITypeLib> library;
  const auto place = PlaceOfLibrary(files, componentFile);
  auto path = FullPathOf(place.file);
  if (!path || !IsFile(*path)) return library;
  if (place.resource) *path += L"\\" + std::to_wstring(*place.resource);
  LoadTypeLibEx(path->c_str(), REGKIND_NONE, library.GetAddressOf());
  return library;
}

std::string GuidText(const GUID& guid) {
  std::array<wchar_t, 40> text{};
  if (guid == GUID{} || StringFromGUID2(guid, text.data(), text.size()) == 0) return {};
  return FromWideRoughly(text.data());
}

std::optional<TypeKind> KindOf(TYPEKIND kind) {
  switch (kind) {
    case TKIND_INTERFACE:
      return TypeKind::Interface;
    case TKIND_DISPATCH:
      return TypeKind::Dispatch;
    case TKIND_COCLASS:
      return TypeKind::Coclass;
    default:
      return std::nullopt;
  }
}

// The attributes of a type, given back to it at the end.
auto AttributesOf(ITypeInfo& type) {
  const auto giveBack = [&type](TYPEATTR* attributes) { type.ReleaseTypeAttr(attributes); };
  TYPEATTR* attributes = nullptr;
  if (FAILED(type.GetTypeAttr(&attributes))) attributes = nullptr;
  return std::unique_ptr<TYPEATTR, decltype(giveBack)>(attributes, giveBack);
}

// The place among the library's types of the interface that a class names; nothing when it belongs
// to another library.
std::optional<std::size_t> OwnType(ITypeLib& library, ITypeInfo& coclass, UINT number) {
  HREFTYPE reference = 0;
  ComPointer<ITypeInfo> type;
  ComPointer<ITypeLib> home;
  UINT index = 0;
  const bool isFound = SUCCEEDED(coclass.GetRefTypeOfImplType(number, &reference)) &&
                       SUCCEEDED(coclass.GetRefTypeInfo(reference, type.GetAddressOf())) &&
                       SUCCEEDED(type->GetContainingTypeLib(home.GetAddressOf(), &index));
  if (!isFound || home.Get() != &library) return std::nullopt;
  return index;
}

// The interface marked as default, else the first that is not a source of events.
std::optional<std::size_t> DefaultInterface(ITypeLib& library, ITypeInfo& coclass, UINT count) {
  std::optional<UINT> chosen;
  for (UINT number = 0; number < count; ++number) {
    INT flags = 0;
    if (FAILED(coclass.GetImplTypeFlags(number, &flags))) continue;
    if ((flags & IMPLTYPEFLAG_FSOURCE) != 0) continue;
    const bool isDefault = (flags & IMPLTYPEFLAG_FDEFAULT) != 0;
    if (isDefault || !chosen) chosen = number;
    if (isDefault) break;
  }
  return chosen ? OwnType(library, coclass, *chosen) : std::nullopt;
}

TypeInfo Described(ITypeLib& library, UINT index) {
  TypeInfo described;
  ComPointer<ITypeInfo> type;
  if (FAILED(library.GetTypeInfo(index, type.GetAddressOf()))) return described;
  const auto attributes = AttributesOf(*type.Get());
  const auto kind = attributes ? KindOf(attributes->typekind) : std::nullopt;
  if (!kind) return described;
  described.kind = *kind;
  described.guid = GuidText(attributes->guid);
  if (*kind == TypeKind::Coclass) {
    described.defaultInterface = DefaultInterface(library, *type.Get(), attributes->cImplTypes);
  }
  return described;
}

}  // namespace

// The loader takes resource 1 for the first one, which may have another number.
std::optional<TypeLibrary> WindowsComponentInspector::Read(const std::string& componentFile) const {
  const auto loaded = Load(files_, componentFile);
  if (!loaded) return LibraryInspector::Read(componentFile);
  TypeLibrary library;
  const UINT count = loaded->GetTypeInfoCount();
  for (UINT index = 0; index < count; ++index) {
    library.types.push_back(Described(*loaded.Get(), index));
  }
  return library;
}

}  // namespace gorbex
