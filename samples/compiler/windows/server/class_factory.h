#pragma once

#include <windows.h>

#include <objbase.h>

#include <utility>

#include "compiler/windows/server/com_object.h"
#include "platform/windows/com_pointer.h"

namespace gorbex::standin {

/// Makes objects of one class of the component.
class ClassFactory : public ComObject<IClassFactory> {
 public:
  explicit ClassFactory(ComPointer<ITypeInfo> type) : interface_(std::move(type)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL isLocked) override;

 private:
  ComPointer<ITypeInfo> interface_;
};

/// The factory of a class; null when the library has no such class, or none that may be created.
[[nodiscard]] ComPointer<ClassFactory> FactoryOf(ITypeLib& library, REFCLSID clsid);

}  // namespace gorbex::standin
