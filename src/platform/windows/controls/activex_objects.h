#pragma once

#include <memory>
#include <string>

#include "platform/windows/automation_objects.h"

namespace gorbex {

/// Objects of registered components, and their user controls, too: for a program whose toolkit has
/// windows that these can be shown in.
class ActiveXObjects : public AutomationObjects {
 public:
  /// The control is shown by ShowIn, with a window of the toolkit, and draws itself: it never asks
  /// to be painted.
  [[nodiscard]] std::unique_ptr<ComponentControl> CreateControl(
      const std::string& identifier, std::function<void()> repaint) override;
};

}  // namespace gorbex
