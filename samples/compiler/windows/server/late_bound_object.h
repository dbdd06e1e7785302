#pragma once

#include <windows.h>

#include <oaidl.h>

#include <map>
#include <utility>

#include "compiler/windows/server/com_object.h"
#include "platform/windows/com_pointer.h"

namespace gorbex::standin {

/// An object of any class: has the properties that the class's interface lists, and keeps what they
/// are given. It is used only by name; the code of the class is not run.
class LateBoundObject : public ComObject<IDispatch> {
 public:
  explicit LateBoundObject(ComPointer<ITypeInfo> type) : interface_(std::move(type)) {}
  ~LateBoundObject() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID lcid,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID lcid, WORD kind,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrongParameter) override;

 private:
  HRESULT Get(DISPID id, VARTYPE type, const DISPPARAMS& parameters, VARIANT* result);
  HRESULT Put(DISPID id, VARTYPE type, LCID lcid, const DISPPARAMS& parameters,
              UINT* wrongParameter);

  ComPointer<ITypeInfo> interface_;
  std::map<DISPID, VARIANT> values_;
};

}  // namespace gorbex::standin
