#pragma once

#include <functional>
#include <string>
#include <utility>

#include "core/property.h"

namespace gorbex {

/// One menu entry: what menus, tool bars, pop-ups and the command line run and enable.
class Command {
 public:
  Command(std::string name, std::string text, std::string shortcut = {})
      : caption(std::move(text)), name_(std::move(name)), shortcut_(std::move(shortcut)) {}

  /// The control name, such as "mnuFileBuild".
  [[nodiscard]] const std::string& Name() const { return name_; }

  /// Such as "Ctrl+S"; empty for none.
  [[nodiscard]] const std::string& Shortcut() const { return shortcut_; }

  void SetHandler(std::function<void()> handler) { handler_ = std::move(handler); }

  [[nodiscard]] bool IsHandled() const { return static_cast<bool>(handler_); }

  /// Adds to `enabled` what has to hold when a user runs the entry.
  void SetPossible(std::function<bool()> possible) { possible_ = std::move(possible); }

  /// Whether a user can run the entry now: it is enabled, and what it needs holds. Front ends ask
  /// before they run it.
  [[nodiscard]] bool IsPossible() const { return enabled.Get() && (!possible_ || possible_()); }

  /// Runs the handler, which reports what it lacks; false when the entry is disabled or has none.
  bool Execute() {
    if (!enabled.Get() || !handler_) return false;
    handler_();
    return true;
  }

  Property<std::string> caption;  ///< with the access key marked by "&"
  Property<bool> enabled{true};
  Property<bool> checked{false};
  Property<bool> visible{true};

 private:
  std::string name_;
  std::string shortcut_;
  std::function<void()> handler_;
  std::function<bool()> possible_;
};

}  // namespace gorbex
