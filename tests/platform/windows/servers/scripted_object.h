#pragma once

#include <windows.h>

#include <oaidl.h>

#include <atomic>
#include <string>
#include <utility>

namespace gorbex::test {

/// The object at the other end of automation in the tests. Its answers are in the file
/// "answers" of the servers' folder in a line "Class.Member=ANSWER", of several the last one: a
/// text, "@Class" for an object, "!NUMBER|WORDS" for a failure, "~" for nothing after a long time,
/// and nothing for Nothing. Every call that did not fail is noted in the file "journal":
/// "Class.Member" for a property that is read, "Class.Member = VALUE" for one that is set,
/// "Class.Member(VALUE, ...)" for every other call.
class ScriptedObject : public IDispatch {
 public:
  explicit ScriptedObject(std::string name) : name_(std::move(name)) { ++living; }
  virtual ~ScriptedObject() { --living; }
  ScriptedObject(const ScriptedObject&) = delete;
  ScriptedObject& operator=(const ScriptedObject&) = delete;

  /// How many there are: the library is in use while there is one.
  inline static std::atomic<unsigned> living = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kinds, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override;

 private:
  std::string name_;
  ULONG references_ = 1;
};

}  // namespace gorbex::test
