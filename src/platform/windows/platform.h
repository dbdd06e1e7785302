#pragma once

#include <memory>

#include "platform/services.h"

namespace gorbex {

/// All services of the system this program runs on. Making it chooses the code page of the process.
class WindowsPlatform {
 public:
  WindowsPlatform();

  /// With another maker of objects, such as one that shows controls.
  explicit WindowsPlatform(std::unique_ptr<ComponentObjects> objects);
  ~WindowsPlatform();
  WindowsPlatform(const WindowsPlatform&) = delete;
  WindowsPlatform& operator=(const WindowsPlatform&) = delete;

  /// The folder of the program's own file, or what SpelledFolder() gives for it.
  [[nodiscard]] const std::string& ProgramFolder() const;

  /// The services with the front end's own event pump; valid as long as this object and the pump.
  [[nodiscard]] PlatformServices Services(EventPump& events);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace gorbex
