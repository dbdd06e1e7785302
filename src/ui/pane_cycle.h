#pragma once

#include <cstddef>
#include <vector>

#include <wx/window.h>

namespace gorbex::ui {

/// Takes the keyboard from one part of the main window to the next. Parts that are hidden or have
/// nothing for the keyboard are passed over.
class PaneCycle {
 public:
  enum class Direction { Forward, Backward };

  /// The parts in their order; they must outlive this object.
  explicit PaneCycle(std::vector<wxWindow*> parts) : parts_(std::move(parts)) {}

  /// The first part follows the last. From outside the parts, the keyboard goes to the first.
  void Go(Direction direction);

 private:
  [[nodiscard]] std::size_t PartWithFocus() const;

  std::vector<wxWindow*> parts_;
};

}  // namespace gorbex::ui
