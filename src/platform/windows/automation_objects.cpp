#include "platform/windows/automation_objects.h"

#include <windows.h>

#include <objbase.h>

#include <utility>

#include "platform/runtime_error.h"
#include "platform/windows/com_pointer.h"
#include "platform/windows/dispatch.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

[[noreturn]] void Refuse(const std::string& identifier, const std::string& reason) {
  const RuntimeError what(ErrorNumber::CannotCreateObject, identifier);
  throw RuntimeError::WithDescription(what.Code(), what.Description() + ": " + reason);
}

CLSID ClassOf(const std::string& identifier) {
  CLSID clsid{};
  const auto name = ToWide(identifier);
  const bool isName = !name.empty() && identifier.find_first_of({"\\\0", 2}) == std::string::npos;
  if (!isName || FAILED(CLSIDFromProgID(name.c_str(), &clsid))) {
    Refuse(identifier, "it is not registered");
  }
  return clsid;
}

ComPointer<IDispatch> Create(const std::string& identifier) {
  constexpr DWORD kServers = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER;
  const CLSID clsid = ClassOf(identifier);
  void* made = nullptr;
  const HRESULT result = CoCreateInstance(clsid, nullptr, kServers, IID_IDispatch, &made);
  if (FAILED(result)) Refuse(identifier, SystemMessage(static_cast<std::uint32_t>(result)));
  return ComPointer<IDispatch>(static_cast<IDispatch*>(made));
}

class AutomationObject : public ComponentObject {
 public:
  AutomationObject(std::shared_ptr<ComApartment> apartment, ComPointer<IDispatch> object)
      : apartment_(std::move(apartment)), object_(std::move(object)) {}

  void Let(const std::string& property, const std::string& value) override {
    LetProperty(*object_.Get(), property, value);
  }
  [[nodiscard]] std::string Get(const std::string& property) override {
    return PropertyText(*object_.Get(), property);
  }

 private:
  std::shared_ptr<ComApartment> apartment_;  // outlives the object
  ComPointer<IDispatch> object_;
};

}  // namespace

std::unique_ptr<ComponentObject> AutomationObjects::CreateObject(const std::string& identifier) {
  return std::make_unique<AutomationObject>(apartment_, Create(identifier));
}

void AutomationObjects::AddLicense(const std::string& identifier, const std::string& /*key*/) {
  ClassOf(identifier);
}

std::unique_ptr<ComponentControl> AutomationObjects::CreateControl(
    const std::string& identifier, std::function<void()> /*repaint*/) {
  ClassOf(identifier);
  Refuse(identifier, "user controls cannot be shown here");
}

}  // namespace gorbex
