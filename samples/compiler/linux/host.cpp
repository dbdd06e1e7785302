#include "compiler/host.h"

#include <filesystem>
#include <optional>

#include "platform/host.h"
#include "platform/linux/platform.h"

namespace gorbex::standin {

struct Host::System {
  LinuxPlatform platform{Prefix::Choose(std::nullopt, Environment)};
};

Host::Host() : system_(std::make_unique<System>()) {}

Host::~Host() = default;

PlatformServices Host::Services(EventPump& events) {
  return system_->platform.Services(events);
}

std::string Host::CurrentFolder() const {
  return system_->platform.GetPrefix().WindowsPath(std::filesystem::current_path());
}

std::string Host::Program() const {
  return system_->platform.GetPrefix().WindowsPath(std::filesystem::read_symlink("/proc/self/exe"));
}

std::string Host::Image(ImageKind kind) {
  return EmptyImage(kind);
}

std::vector<std::string> Arguments(int count, char** values) {
  return {values + (count > 0 ? 1 : 0), values + count};
}

}  // namespace gorbex::standin
