#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace gorbex {

// Objects of registered components, made and used only by name. Every operation reports failure as
// a RuntimeError: 438 no such property, 383 a read-only one, 13 a text that is not a value of it,
// 440 (or the component's own number) for any other failure of the component, described in the
// component's own words where it has some.

/// An object that a component made.
class ComponentObject {
 public:
  virtual ~ComponentObject() = default;

  /// Sets a property to the value that the text expresses. Letter case of names does not matter.
  virtual void Let(const std::string& property, const std::string& value) = 0;

  /// The property's value as a text.
  [[nodiscard]] virtual std::string Get(const std::string& property) = 0;
};

/// Width and height in pixels, never negative.
struct ControlSize {
  int width = 0;
  int height = 0;
  bool operator==(const ControlSize&) const = default;
};

/// Where a control draws itself: rows of opaque 0x00RRGGBB pixels, the top row first. The memory
/// belongs to the host and is the control's during one call only.
struct PixelBuffer {
  std::uint32_t* pixels = nullptr;
  ControlSize size;
  std::size_t stride = 0;  ///< pixels from the start of a row to the start of the next
};

enum class PointerAction : std::uint32_t { Press = 1, Release = 2, Move = 3 };
enum class PointerButton : std::uint32_t { None = 0, Left = 1, Right = 2, Middle = 3 };

/// An action of the mouse over a control, in pixels from its top left corner.
struct PointerEvent {
  PointerAction action = PointerAction::Press;
  PointerButton button = PointerButton::None;
  int x = 0;
  int y = 0;
};

/// A user control: it draws itself and hears what the user does. Its host is any window or picture;
/// the component decides how it draws.
class ComponentControl {
 public:
  virtual ~ComponentControl() = default;

  virtual void SetSize(ControlSize size) = 0;

  /// Draws the whole control. The buffer is normally as large as the last size that was set.
  virtual void Paint(const PixelBuffer& to) = 0;

  /// Tells the control about the mouse. A control may ignore it.
  virtual void Pointer(const PointerEvent& /*event*/) {}

  /// A character that the user typed, by its Unicode number. A control need not listen.
  virtual void KeyPress(char32_t /*character*/) {}

  /// Shows the control in its own window, in front of all else in a window of the front end's
  /// toolkit, which may go before the control. False for a control that is painted instead and told
  /// what the user does.
  [[nodiscard]] virtual bool ShowIn(void* /*window*/) { return false; }
};

/// Makes objects by their programmatic identifier ("Project.Class"). The objects may outlive it.
class ComponentObjects {
 public:
  virtual ~ComponentObjects() = default;

  /// Error 429, which names the identifier and the reason, when the object cannot be made.
  [[nodiscard]] virtual std::unique_ptr<ComponentObject> CreateObject(
      const std::string& identifier) = 0;

  /// Makes a user control's identifier creatable at run time, without a licence key. Harmless when
  /// repeated. Error 429 when the identifier is not registered.
  virtual void AddLicense(const std::string& identifier) = 0;

  /// As CreateObject. The control calls `repaint` whenever it wants to be painted anew, also from
  /// within calls to it: the host notes the wish and paints later.
  [[nodiscard]] virtual std::unique_ptr<ComponentControl> CreateControl(
      const std::string& identifier, std::function<void()> repaint) = 0;

  /// Unloads component files without objects, so that they can be written again.
  virtual void LetGoOfUnused() {}
};

}  // namespace gorbex
