#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/linux/registry.h"

namespace gorbex {

/// Replaces the system's registration tool where there is no Wine to run it: reads a
/// component's type library and writes or removes the keys by which the component is found.
class Registrar {
 public:
  /// The exit codes of the system's tool.
  enum class Outcome : std::uint32_t {
    Done = 0,
    BadArguments = 1,
    NotLoaded = 3,     ///< no such file, or no component
    NoEntryPoint = 4,  ///< a component without a type library
    Failed = 5,        ///< the registry refused
  };

  Registrar(const FileReader& files, LinuxRegistry& registry)
      : files_(files), registry_(registry) {}

  /// Runs the tool's command line after its name: an optional "/s", "-u" or "/u" to unregister,
  /// and a file. Harmless when that is done already; removes only the component's own keys.
  [[nodiscard]] Outcome Run(std::string_view arguments);

 private:
  const FileReader& files_;
  LinuxRegistry& registry_;
};

}  // namespace gorbex
