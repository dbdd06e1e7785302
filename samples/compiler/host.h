#pragma once

#include <memory>
#include <string>
#include <vector>

#include "compiler/component_image.h"
#include "platform/services.h"

namespace gorbex::standin {

/// The system that the compiler runs on. All paths are Windows paths.
class Host {
 public:
  Host();
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// Valid as long as this object and the pump.
  [[nodiscard]] PlatformServices Services(EventPump& events);
  [[nodiscard]] std::string CurrentFolder() const;

  /// A built file of that kind, before it gets its resources.
  [[nodiscard]] static std::string Image(ImageKind kind);

  /// The compiler's own file.
  [[nodiscard]] std::string Program() const;

 private:
  struct System;
  std::unique_ptr<System> system_;
};

/// The program's arguments in UTF-8, without its name.
[[nodiscard]] std::vector<std::string> Arguments(int count, char** values);

}  // namespace gorbex::standin
