#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/property.h"
#include "core/signal.h"
#include "platform/component_objects.h"
#include "platform/runtime_error.h"

namespace gorbex {

/// A user control that was added to a form at run time, in the form's top left corner.
struct HostedControl {
  std::string name;
  std::unique_ptr<ComponentControl> control;
  Property<ControlSize> size;
  Signal<> repaint;  ///< the control asks to be painted again

  /// Why the control failed at its last painting or event; empty when it did not. Front ends show
  /// it in the control's place, because a message for every event would never end.
  Property<std::string> problem;

  /// Tells the control its size, then the listeners that draw it. The control's error when it
  /// fails.
  void Resize(ControlSize newSize);

  /// Shown in its own window, and not to be painted.
  bool hasWindow = false;

  // Called by a front end. A failure becomes the problem and is not an error.
  void ShowIn(void* window) {
    Try([&] { hasWindow = control->ShowIn(window); });
  }
  void Paint(const PixelBuffer& to) {
    Try([&] { control->Paint(to); });
  }
  void Pointer(const PointerEvent& event) {
    Try([&] { control->Pointer(event); });
  }
  void KeyPress(char32_t character) {
    Try([&] { control->KeyPress(character); });
  }

 private:
  template <class Action>
  void Try(Action&& action) {
    std::string failure;
    try {
      action();
    } catch (const RuntimeError& error) {
      failure = error.Description();
    }
    if (failure != problem.Get()) problem.Set(failure);
  }
};

/// The form that hosts user controls under test. It has no other controls.
class frmTestControl {
 public:
  using Storage = std::vector<std::unique_ptr<HostedControl>>;

  Property<bool> visible{false};
  ControlSize clientSize;  ///< as the front end's window has it

  Signal<> added;      ///< the last of the controls
  Signal<> unloading;  ///< the controls still exist, but are about to be destroyed

  /// In the order they were added: each is in front of those before it.
  [[nodiscard]] const Storage& Controls() const { return controls_; }

  /// Names the control by its number, and shows it in front of the others.
  void Add(std::unique_ptr<HostedControl> control);

  /// Hides the form and destroys its controls. It may be called again, also by listeners.
  void Unload();

 private:
  Storage controls_;
};

}  // namespace gorbex
