#include "platform/windows/dispatch.h"

#include <algorithm>

#include "platform/runtime_error.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

// Error 440 for a call of an object's member that failed without a message.
RuntimeError AutomationFailure(HRESULT result, const std::string& member) {
  return RuntimeError::WithReason(ErrorNumber::AutomationError, member,
                                  SystemMessage(static_cast<std::uint32_t>(result)));
}

/// An object's report of its failure, with what that owns.
class AutomationException {
 public:
  AutomationException() = default;
  ~AutomationException();
  AutomationException(const AutomationException&) = delete;
  AutomationException& operator=(const AutomationException&) = delete;

  EXCEPINFO* Place() { return &info_; }

  /// The object's own words and number.
  [[nodiscard]] RuntimeError Error(const std::string& member);

 private:
  [[nodiscard]] ErrorNumber Number() const;

  EXCEPINFO info_{};
};

AutomationException::~AutomationException() {
  SysFreeString(info_.bstrSource);
  SysFreeString(info_.bstrDescription);
  SysFreeString(info_.bstrHelpFile);
}

RuntimeError AutomationException::Error(const std::string& member) {
  const auto fillIn = std::exchange(info_.pfnDeferredFillIn, nullptr);
  if (fillIn != nullptr) fillIn(&info_);
  const auto words = FromWideRoughly({info_.bstrDescription, SysStringLen(info_.bstrDescription)});
  if (!words.empty()) return RuntimeError::WithDescription(Number(), words);
  for (const auto known :
       {ErrorNumber::TypeMismatch, ErrorNumber::PropertyReadOnly, ErrorNumber::NoSuchProperty}) {
    if (Number() == known) return RuntimeError(known, member);
  }
  return AutomationFailure(info_.scode, member);
}

// The language's own numbers come as they are or inside an automation error.
ErrorNumber AutomationException::Number() const {
  constexpr std::uint32_t kLanguage = 0x800A0000;
  const auto code = static_cast<std::uint32_t>(info_.scode);
  if (info_.wCode != 0) return static_cast<ErrorNumber>(info_.wCode);
  if ((code & 0xFFFF0000U) == kLanguage) return static_cast<ErrorNumber>(code & 0xFFFFU);
  if (info_.scode == DISP_E_TYPEMISMATCH) return ErrorNumber::TypeMismatch;
  return code == 0 ? ErrorNumber::AutomationError : static_cast<ErrorNumber>(info_.scode);
}

/// Arguments in the system's form, with what they own.
class Parameters {
 public:
  explicit Parameters(const Arguments& arguments) : values_(arguments.size()) {
    // The system wants the last one first.
    std::transform(arguments.rbegin(), arguments.rend(), values_.begin(), ValueOf);
    const auto isText = [](const VARIANT& value) { return value.vt == VT_BSTR; };
    const bool isWhole = std::none_of(values_.begin(), values_.end(), [&](const VARIANT& value) {
      return isText(value) && value.bstrVal == nullptr;
    });
    if (!isWhole) Clear();
    if (!isWhole) throw RuntimeError(ErrorNumber::OutOfMemory);
  }
  ~Parameters() { Clear(); }
  Parameters(const Parameters&) = delete;
  Parameters& operator=(const Parameters&) = delete;

  /// Valid as long as this object.
  [[nodiscard]] DISPPARAMS ForA(WORD kind) {
    const bool isPut = kind == DISPATCH_PROPERTYPUT;
    return {values_.data(), isPut ? &put_ : nullptr, static_cast<UINT>(values_.size()),
            isPut ? 1U : 0U};
  }

 private:
  static VARIANT ValueOf(const Argument& argument) {
    VARIANT value;
    VariantInit(&value);
    if (const auto* text = std::get_if<std::string>(&argument)) {
      const auto wide = ToWide(*text);
      value.vt = VT_BSTR;
      value.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    } else if (const auto* number = std::get_if<std::int32_t>(&argument)) {
      value.vt = VT_I4;
      value.lVal = *number;
    } else {
      value.vt = VT_BOOL;
      value.boolVal = std::get<bool>(argument) ? VARIANT_TRUE : VARIANT_FALSE;
    }
    return value;
  }
  void Clear() {
    for (VARIANT& value : values_) VariantClear(&value);
  }

  std::vector<VARIANT> values_;
  DISPID put_ = DISPID_PROPERTYPUT;
};

DISPID NumberOf(IDispatch& object, const std::string& member) {
  auto name = ToWide(member);
  auto* text = name.data();
  DISPID number = DISPID_UNKNOWN;
  const HRESULT result = object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &number);
  if (result == DISP_E_UNKNOWNNAME) throw RuntimeError(ErrorNumber::NoSuchProperty, member);
  if (FAILED(result)) throw AutomationFailure(result, member);
  return number;
}

[[noreturn]] void Raise(HRESULT outcome, WORD kind, AutomationException& exception,
                        const std::string& member) {
  switch (outcome) {
    case DISP_E_MEMBERNOTFOUND:
      throw RuntimeError(kind == DISPATCH_PROPERTYPUT ? ErrorNumber::PropertyReadOnly
                                                      : ErrorNumber::NoSuchProperty,
                         member);
    case DISP_E_TYPEMISMATCH:
    case DISP_E_OVERFLOW:
      throw RuntimeError(ErrorNumber::TypeMismatch, member);
    case DISP_E_EXCEPTION:
      throw exception.Error(member);
    default:
      throw AutomationFailure(outcome, member);
  }
}

}  // namespace

std::string MemberAnswer::Text() {
  const VARIANT& text = As(VT_BSTR);
  return FromWideRoughly({text.bstrVal, SysStringLen(text.bstrVal)});
}

Dispatch MemberAnswer::Object() {
  if (value_.vt == VT_EMPTY || value_.vt == VT_NULL) return {};
  const bool isObject = value_.vt == VT_DISPATCH || value_.vt == VT_UNKNOWN;
  if (!isObject) throw RuntimeError(ErrorNumber::TypeMismatch, member_);
  ComPointer<IDispatch> object;
  if (value_.punkVal != nullptr &&
      FAILED(value_.punkVal->QueryInterface(IID_IDispatch,
                                            reinterpret_cast<void**>(object.GetAddressOf())))) {
    throw RuntimeError(ErrorNumber::TypeMismatch, member_);
  }
  return Dispatch(std::move(object));
}

VARIANT& MemberAnswer::As(VARTYPE type) {
  if (FAILED(VariantChangeType(&value_, &value_, VARIANT_ALPHABOOL, type))) {
    throw RuntimeError(ErrorNumber::TypeMismatch, member_);
  }
  return value_;
}

MemberAnswer Dispatch::Property(const std::string& name) const {
  MemberAnswer answer(name);
  Invoke(name, DISPATCH_PROPERTYGET, {}, answer.Place());
  return answer;
}

void Dispatch::Let(const std::string& property, const Argument& value) const {
  Invoke(property, DISPATCH_PROPERTYPUT, {value}, nullptr);
}

MemberAnswer Dispatch::Ask(const std::string& name, const Arguments& arguments) const {
  MemberAnswer answer(name);
  Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, answer.Place());
  return answer;
}

void Dispatch::Do(const std::string& method, const Arguments& arguments) const {
  Invoke(method, DISPATCH_METHOD, arguments, nullptr);
}

void Dispatch::Invoke(const std::string& name, WORD kind, const Arguments& arguments,
                      VARIANT* answer) const {
  if (!object_) throw RuntimeError(ErrorNumber::ObjectNotSet, name);
  const DISPID number = NumberOf(*object_.Get(), name);
  Parameters values(arguments);
  DISPPARAMS parameters = values.ForA(kind);
  AutomationException exception;
  UINT wrong = 0;
  const HRESULT outcome = object_->Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                          answer, exception.Place(), &wrong);
  if (FAILED(outcome)) Raise(outcome, kind, exception, name);
}

}  // namespace gorbex
