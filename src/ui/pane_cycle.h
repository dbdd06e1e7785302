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

  /// In the order in which they are gone through; they must outlive this object.
  explicit PaneCycle(std::vector<wxWindow*> parts) : parts_(std::move(parts)) {}

  /// After the last part comes the first, which is also where the keyboard goes from elsewhere.
  void Go(Direction direction);

 private:
  [[nodiscard]] std::size_t PartWithFocus() const;

  std::vector<wxWindow*> parts_;
};

}  // namespace gorbex::ui
