#include "platform/windows/automation_error.h"

#include <oleauto.h>

#include <cstdint>
#include <utility>

#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {

RuntimeError AutomationFailure(HRESULT result, const std::string& member) {
  const RuntimeError what(ErrorNumber::AutomationError, member);
  return RuntimeError::WithDescription(
      what.Code(),
      what.Description() + " (" + SystemMessage(static_cast<std::uint32_t>(result)) + ")");
}

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

}  // namespace gorbex
