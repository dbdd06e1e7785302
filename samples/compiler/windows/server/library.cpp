// The functions that the system calls in a component that is a library.
#include <windows.h>

#include <olectl.h>

#include "compiler/windows/server/class_factory.h"
#include "compiler/windows/server/own_component.h"

using namespace gorbex::standin;

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  const auto library = ComponentLibrary();
  if (!library) return CLASS_E_CLASSNOTAVAILABLE;
  const auto factory = FactoryOf(*library.Get(), clsid);
  return factory ? factory->QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return CodeUse::IsNeeded() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return RegisterComponent();
}

STDAPI DllUnregisterServer() {
  return UnregisterComponent();
}
