#pragma once

#include <memory>

#include "platform/component_objects.h"
#include "platform/windows/com_apartment.h"

namespace gorbex {

/// Makes objects of registered components and uses them by late binding. Every object keeps the
/// thread's right to use components as long as it lives. Controls are refused: they need a window.
class AutomationObjects : public ComponentObjects {
 public:
  [[nodiscard]] std::unique_ptr<ComponentObject> CreateObject(
      const std::string& identifier) override;
  void AddLicense(const std::string& identifier) override;
  [[nodiscard]] std::unique_ptr<ComponentControl> CreateControl(
      const std::string& identifier, std::function<void()> repaint) override;
  void LetGoOfUnused() override;

 protected:
  [[nodiscard]] std::shared_ptr<ComApartment> Apartment() const { return apartment_; }

 private:
  std::shared_ptr<ComApartment> apartment_ = std::make_shared<ComApartment>();
};

}  // namespace gorbex
