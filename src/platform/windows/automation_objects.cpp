#include "platform/windows/automation_objects.h"

#include <windows.h>

#include <objbase.h>

#include <utility>

#include "platform/windows/automation_class.h"
#include "platform/windows/dispatch.h"

namespace gorbex {
namespace {

class AutomationObject : public ComponentObject {
 public:
  AutomationObject(std::shared_ptr<ComApartment> apartment, Dispatch object)
      : apartment_(std::move(apartment)), object_(std::move(object)) {}

  void Let(const std::string& property, const std::string& value) override {
    object_.Let(property, value);
  }
  [[nodiscard]] std::string Get(const std::string& property) override {
    return object_.Property(property).Text();
  }

 private:
  std::shared_ptr<ComApartment> apartment_;  // outlives the object
  Dispatch object_;
};

}  // namespace

std::unique_ptr<ComponentObject> AutomationObjects::CreateObject(const std::string& identifier) {
  return std::make_unique<AutomationObject>(apartment_, MakeObject(identifier));
}

void AutomationObjects::AddLicense(const std::string& identifier) {
  static_cast<void>(ClassOf(identifier));
}

std::unique_ptr<ComponentControl> AutomationObjects::CreateControl(
    const std::string& identifier, std::function<void()> /*repaint*/) {
  static_cast<void>(ClassOf(identifier));
  RefuseObject(identifier, "user controls cannot be shown here");
}

// The first call only marks what is unused; without a delay the second one unloads it.
void AutomationObjects::LetGoOfUnused() {
  for (int call = 0; call < 2; ++call) CoFreeUnusedLibrariesEx(0, 0);
}

}  // namespace gorbex
