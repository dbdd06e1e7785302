#include "core/test_control_form.h"

#include <utility>

#include "platform/runtime_error.h"

namespace gorbex {

template <class Action>
void HostedControl::Try(Action&& action) {
  std::string failure;
  try {
    action();
  } catch (const RuntimeError& error) {
    failure = error.Description();
  }
  if (failure != problem.Get()) problem.Set(failure);
}

void HostedControl::Resize(ControlSize newSize) {
  control->SetSize(newSize);
  size.Set(newSize);
}

void HostedControl::ShowIn(void* window) {
  Try([&] { hasWindow = control->ShowIn(window); });
}

void HostedControl::Paint(const PixelBuffer& to) {
  Try([&] { control->Paint(to); });
}

void HostedControl::Pointer(const PointerEvent& event) {
  Try([&] { control->Pointer(event); });
}

void HostedControl::KeyPress(char32_t character) {
  Try([&] { control->KeyPress(character); });
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
