#pragma once

#include <filesystem>
#include <memory>

#include "platform/linux/prefix.h"
#include "platform/services.h"

namespace gorbex {

/// All services of a Linux host over one prefix. Making it chooses the code page of the process.
class LinuxPlatform {
 public:
  explicit LinuxPlatform(const std::filesystem::path& prefixRoot);
  ~LinuxPlatform();
  LinuxPlatform(const LinuxPlatform&) = delete;
  LinuxPlatform& operator=(const LinuxPlatform&) = delete;

  [[nodiscard]] const Prefix& GetPrefix() const;

  /// The services with the front end's own event pump; valid as long as this object and the pump.
  [[nodiscard]] PlatformServices Services(EventPump& events);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace gorbex
