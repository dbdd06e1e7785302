#include "compiler/windows/server/late_bound_object.h"

#include <oleauto.h>

#include <new>
#include <optional>
#include <utility>

namespace gorbex::standin {
namespace {

constexpr WORD kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

// Of the value that is given away, or taken as the only parameter.
VARTYPE ValueType(const FUNCDESC& function) {
  if (function.invkind == INVOKE_PROPERTYGET) return function.elemdescFunc.tdesc.vt;
  return function.cParams == 1 ? function.lprgelemdescParam[0].tdesc.vt : VARTYPE{VT_VARIANT};
}

// The type of a property that may be used in that way.
std::optional<VARTYPE> PropertyType(ITypeInfo& type, DISPID id, WORD kind) {
  FUNCDESC* function = nullptr;
  for (UINT index = 0; SUCCEEDED(type.GetFuncDesc(index, &function)); ++index) {
    const bool isMeant = function->memid == id && (function->invkind & kind) != 0;
    const auto value = isMeant ? std::optional(ValueType(*function)) : std::nullopt;
    type.ReleaseFuncDesc(function);
    if (value) return value;
  }
  return std::nullopt;
}

// The value of a property that was never set.
HRESULT MakeFirstValue(VARTYPE type, VARIANT& value) {
  VariantInit(&value);
  if (type == VT_VARIANT) return S_OK;
  if (type != VT_DISPATCH) return VariantChangeType(&value, &value, 0, type);
  value.vt = VT_DISPATCH;
  value.pdispVal = nullptr;
  return S_OK;
}

HRESULT Convert(VARIANT& to, VARIANT& from, VARTYPE type, LCID lcid) {
  VARIANT plain;
  VariantInit(&plain);
  HRESULT result = VariantCopyInd(&plain, &from);
  if (FAILED(result)) return result;
  if (type == VT_VARIANT) {
    to = plain;
    return S_OK;
  }
  result = VariantChangeTypeEx(&to, &plain, lcid, VARIANT_ALPHABOOL, type);
  VariantClear(&plain);
  return result;
}

}  // namespace

LateBoundObject::~LateBoundObject() {
  for (auto& [id, value] : values_) VariantClear(&value);
}

HRESULT LateBoundObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT LateBoundObject::GetTypeInfo(UINT index, LCID /*lcid*/, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return index == 0 ? interface_.CopyTo(info) : DISP_E_BADINDEX;
}

HRESULT LateBoundObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count,
                                       LCID /*lcid*/, DISPID* ids) {
  return interface_->GetIDsOfNames(names, count, ids);
}

HRESULT LateBoundObject::Invoke(DISPID id, REFIID /*reserved*/, LCID lcid, WORD kind,
                                DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* /*exception*/,
                                UINT* wrongParameter) {
  if (parameters == nullptr) return E_POINTER;
  const WORD use = (kind & kPuts) != 0 ? kind & kPuts : kind & DISPATCH_PROPERTYGET;
  const auto type = PropertyType(*interface_.Get(), id, use);
  if (!type) return DISP_E_MEMBERNOTFOUND;
  try {
    return (use & kPuts) != 0 ? Put(id, *type, lcid, *parameters, wrongParameter)
                              : Get(id, *type, *parameters, result);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

HRESULT LateBoundObject::Get(DISPID id, VARTYPE type, const DISPPARAMS& parameters,
                             VARIANT* result) {
  if (parameters.cArgs != 0) return DISP_E_BADPARAMCOUNT;
  if (result == nullptr) return S_OK;
  const auto known = values_.find(id);
  if (known == values_.end()) return MakeFirstValue(type, *result);
  VariantInit(result);
  return VariantCopy(result, &known->second);
}

HRESULT LateBoundObject::Put(DISPID id, VARTYPE type, LCID lcid, const DISPPARAMS& parameters,
                             UINT* wrongParameter) {
  if (parameters.cArgs != 1) return DISP_E_BADPARAMCOUNT;
  VARIANT value;
  VariantInit(&value);
  const HRESULT result = Convert(value, parameters.rgvarg[0], type, lcid);
  if (FAILED(result)) {
    if (wrongParameter != nullptr) *wrongParameter = 0;
    return result;
  }
  VARIANT& kept = values_[id];
  std::swap(kept, value);
  VariantClear(&value);
  return S_OK;
}

}  // namespace gorbex::standin
