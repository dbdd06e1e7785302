#include "core/test_control_form.h"

#include <utility>

namespace gorbex {

void HostedControl::Resize(ControlSize newSize) {
  control->SetSize(newSize);
  size.Set(newSize);
}

void frmTestControl::Add(std::unique_ptr<HostedControl> control) {
  control->name = "ChildControl" + std::to_string(controls_.size());
  controls_.push_back(std::move(control));
  added.Emit();
}

void frmTestControl::Unload() {
  if (!visible.Get() && controls_.empty()) return;
  unloading.Emit();
  const Storage doomed = std::exchange(controls_, {});
  visible.Set(false);
}

}  // namespace gorbex
