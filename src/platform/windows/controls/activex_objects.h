#pragma once

#include <memory>
#include <string>

#include "platform/windows/automation_objects.h"

namespace gorbex {

/// Makes objects of registered components, and also their user controls, for a program whose
/// toolkit has windows that can show them.
class ActiveXObjects : public AutomationObjects {
 public:
  /// ShowIn shows the control in a window of the toolkit. The control draws itself and never asks
  /// to be painted.
  [[nodiscard]] std::unique_ptr<ComponentControl> CreateControl(
      const std::string& identifier, std::function<void()> repaint) override;
};

}  // namespace gorbex
