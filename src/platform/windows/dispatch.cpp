#include "platform/windows/dispatch.h"

#include <oleauto.h>

#include <cstdint>

#include "platform/runtime_error.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

/// A value of automation with what it owns.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  ~Variant() { VariantClear(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  VARIANT* Place() { return &value_; }

  void SetText(const std::string& text) {
    const auto wide = ToWide(text);
    value_.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (value_.bstrVal == nullptr) throw RuntimeError(ErrorNumber::OutOfMemory);
    value_.vt = VT_BSTR;
  }

  /// False when the value is none that has a text.
  bool BecomeText() {
    return SUCCEEDED(VariantChangeType(&value_, &value_, VARIANT_ALPHABOOL, VT_BSTR));
  }
  [[nodiscard]] std::string Text() const {
    return FromWideRoughly({value_.bstrVal, SysStringLen(value_.bstrVal)});
  }

 private:
  VARIANT value_{};
};

[[noreturn]] void Raise(HRESULT result, const std::string& property) {
  const RuntimeError what(ErrorNumber::AutomationError, property);
  throw RuntimeError::WithDescription(
      what.Code(),
      what.Description() + " (" + SystemMessage(static_cast<std::uint32_t>(result)) + ")");
}

/// What an object says about its failure.
class Exception {
 public:
  ~Exception() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }
  Exception() = default;
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;

  EXCEPINFO* Place() { return &info_; }

  [[noreturn]] void Raise(const std::string& property) {
    if (info_.pfnDeferredFillIn != nullptr) info_.pfnDeferredFillIn(&info_);
    const auto words =
        FromWideRoughly({info_.bstrDescription, SysStringLen(info_.bstrDescription)});
    const auto number = Number();
    if (!words.empty()) throw RuntimeError::WithDescription(number, words);
    if (number != ErrorNumber::AutomationError) throw RuntimeError(number, property);
    gorbex::Raise(info_.scode, property);
  }

 private:
  // The language's own numbers come as they are or inside an automation error.
  [[nodiscard]] ErrorNumber Number() const {
    constexpr std::uint32_t kLanguage = 0x800A0000;
    const auto code = static_cast<std::uint32_t>(info_.scode);
    const bool isLanguages = (code & 0xFFFF0000U) == kLanguage;
    const auto number = info_.wCode != 0 ? info_.wCode : isLanguages ? code & 0xFFFFU : 0;
    for (const auto known :
         {ErrorNumber::TypeMismatch, ErrorNumber::PropertyReadOnly, ErrorNumber::NoSuchProperty}) {
      if (static_cast<std::uint32_t>(known) == number) return known;
    }
    return info_.scode == DISP_E_TYPEMISMATCH ? ErrorNumber::TypeMismatch
                                              : ErrorNumber::AutomationError;
  }

  EXCEPINFO info_{};
};

DISPID NumberOf(IDispatch& object, const std::string& property) {
  auto name = ToWide(property);
  auto* text = name.data();
  DISPID number = DISPID_UNKNOWN;
  const HRESULT result = object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &number);
  if (result == DISP_E_UNKNOWNNAME) throw RuntimeError(ErrorNumber::NoSuchProperty, property);
  if (FAILED(result)) Raise(result, property);
  return number;
}

void Invoke(IDispatch& object, const std::string& property, WORD kind, DISPPARAMS& parameters,
            VARIANT* result) {
  const DISPID number = NumberOf(object, property);
  Exception exception;
  UINT wrong = 0;
  const HRESULT outcome = object.Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                        result, exception.Place(), &wrong);
  if (SUCCEEDED(outcome)) return;
  switch (outcome) {
    case DISP_E_MEMBERNOTFOUND:
      throw RuntimeError(kind == DISPATCH_PROPERTYPUT ? ErrorNumber::PropertyReadOnly
                                                      : ErrorNumber::NoSuchProperty,
                         property);
    case DISP_E_TYPEMISMATCH:
    case DISP_E_OVERFLOW:
      throw RuntimeError(ErrorNumber::TypeMismatch, property);
    case DISP_E_EXCEPTION:
      exception.Raise(property);
    default:
      Raise(outcome, property);
  }
}

}  // namespace

void LetProperty(IDispatch& object, const std::string& property, const std::string& value) {
  Variant text;
  text.SetText(value);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{text.Place(), &put, 1, 1};
  Invoke(object, property, DISPATCH_PROPERTYPUT, parameters, nullptr);
}

std::string PropertyText(IDispatch& object, const std::string& property) {
  Variant value;
  DISPPARAMS none{};
  Invoke(object, property, DISPATCH_PROPERTYGET, none, value.Place());
  if (!value.BecomeText()) throw RuntimeError(ErrorNumber::TypeMismatch, property);
  return value.Text();
}

}  // namespace gorbex
