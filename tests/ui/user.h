#pragma once

#include <wx/uiaction.h>
#include <wx/window.h>

#include <functional>

namespace gorbex::test {

/// Somebody at mouse and keyboard. Every act returns when the program has taken it.
class User {
 public:
  /// Lets the program work until the condition holds; false when it never does.
  static bool Sees(const std::function<bool()>& condition);

  /// Lets the program take what is waiting for it.
  static void Waits();

  void Presses(int key, int modifiers = wxMOD_NONE);

  /// Presses a key without waiting: an open menu takes its keys itself, and a wait would take them
  /// away.
  void PressesInMenu(int key);
  void Types(const char* text);

  /// A click into a control, at its middle or at another point.
  void Clicks(wxWindow& control);
  void Clicks(wxWindow& control, const wxPoint& at);
  void Drags(wxWindow& from, const wxPoint& at, wxWindow& to);

  /// Does something once a modal window is over everything else.
  static void Then(std::function<void()> act);

 private:
  wxUIActionSimulator simulator_;
};

/// The text in the clipboard.
[[nodiscard]] wxString Clipboard();

/// A control by its name, anywhere; null when there is none that is shown.
[[nodiscard]] wxWindow* Shown(const char* name);

/// As Shown, of a type, and waited for; the test fails hard without it.
template <class Control>
[[nodiscard]] Control& The(const char* name) {
  if (Shown(name) == nullptr) User::Sees([name] { return Shown(name) != nullptr; });
  return dynamic_cast<Control&>(*Shown(name));
}

}  // namespace gorbex::test
