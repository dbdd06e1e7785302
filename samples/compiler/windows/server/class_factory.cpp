#include "compiler/windows/server/class_factory.h"

#include <new>

#include "compiler/windows/server/late_bound_object.h"

namespace gorbex::standin {
namespace {

bool MayBeCreated(ITypeInfo& type) {
  TYPEATTR* attributes = nullptr;
  if (FAILED(type.GetTypeAttr(&attributes))) return false;
  const bool mayBe =
      attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0;
  type.ReleaseTypeAttr(attributes);
  return mayBe;
}

}  // namespace

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  ComPointer<LateBoundObject> made;
  *made.GetAddressOf() = new (std::nothrow) LateBoundObject(interface_);
  return made ? made->QueryInterface(iid, object) : E_OUTOFMEMORY;
}

HRESULT ClassFactory::LockServer(BOOL isLocked) {
  CodeUse::Lock(isLocked != FALSE);
  return S_OK;
}

// A class of the compiler's has one interface.
ComPointer<ClassFactory> FactoryOf(ITypeLib& library, REFCLSID clsid) {
  ComPointer<ITypeInfo> type;
  ComPointer<ITypeInfo> members;
  HREFTYPE reference = 0;
  const bool isFound = SUCCEEDED(library.GetTypeInfoOfGuid(clsid, type.GetAddressOf())) &&
                       MayBeCreated(*type.Get()) &&
                       SUCCEEDED(type->GetRefTypeOfImplType(0, &reference)) &&
                       SUCCEEDED(type->GetRefTypeInfo(reference, members.GetAddressOf()));
  ComPointer<ClassFactory> factory;
  if (isFound) *factory.GetAddressOf() = new (std::nothrow) ClassFactory(std::move(members));
  return factory;
}

}  // namespace gorbex::standin
