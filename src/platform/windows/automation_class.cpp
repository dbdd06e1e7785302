#include "platform/windows/automation_class.h"

#include <optional>

#include "platform/runtime_error.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

std::optional<CLSID> Find(const std::string& identifier) {
  CLSID clsid{};
  const auto name = ToWide(identifier);
  const bool isName = !name.empty() && identifier.find_first_of({"\\\0", 2}) == std::string::npos;
  if (!isName || FAILED(CLSIDFromProgID(name.c_str(), &clsid))) return std::nullopt;
  return clsid;
}

void Require(HRESULT result, const std::string& identifier) {
  if (SUCCEEDED(result)) return;
  RefuseObject(identifier, SystemMessage(static_cast<std::uint32_t>(result)));
}

ComPointer<IDispatch> Make(const std::string& identifier, DWORD servers) {
  ComPointer<IDispatch> made;
  Require(CoCreateInstance(ClassOf(identifier), nullptr, servers, IID_IDispatch,
                           reinterpret_cast<void**>(made.GetAddressOf())),
          identifier);
  return made;
}

}  // namespace

void RefuseObject(const std::string& identifier, const std::string& reason) {
  const RuntimeError what(ErrorNumber::CannotCreateObject, identifier);
  throw RuntimeError::WithDescription(what.Code(), what.Description() + ": " + reason);
}

CLSID ClassOf(const std::string& identifier) {
  const auto found = Find(identifier);
  if (!found) RefuseObject(identifier, "it is not registered");
  return *found;
}

bool IsRegistered(const std::string& identifier) {
  return Find(identifier).has_value();
}

Dispatch MakeObject(const std::string& identifier) {
  return Dispatch(Make(identifier, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER));
}

ComPointer<IDispatch> MakeControl(const std::string& identifier) {
  return Make(identifier, CLSCTX_INPROC_SERVER);
}

}  // namespace gorbex
