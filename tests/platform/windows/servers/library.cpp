#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

#include "class_ids.h"
#include "scripted_object.h"

namespace gorbex::test {
namespace {

/// Makes objects of one class; none of a licensed one, which wants a key.
class Factory : public IClassFactory {
 public:
  explicit Factory(const ServerOf& server) : server_(server) {}
  virtual ~Factory() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool isKnown = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
    *object = isKnown ? this : nullptr;
    if (isKnown) AddRef();
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    return server_.isLicensed ? CLASS_E_NOTLICENSED : Make(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  HRESULT Make(REFIID id, void** object) {
    auto* made = new ScriptedObject(server_.name);
    const HRESULT result = made->QueryInterface(id, object);
    made->Release();
    return result;
  }

  const ServerOf& server_;
  ULONG references_ = 1;
};

}  // namespace
}  // namespace gorbex::test

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
  using namespace gorbex::test;
  for (unsigned long i = 0; i < std::size(kServers); ++i) {
    if (!IsEqualCLSID(classId, ServerClass(i))) continue;
    auto* factory = new Factory(kServers[i]);
    const HRESULT result = factory->QueryInterface(id, object);
    factory->Release();
    return result;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return gorbex::test::ScriptedObject::living == 0 ? S_OK : S_FALSE;
}
