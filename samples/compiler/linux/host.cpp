#include "compiler/host.h"

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "platform/linux/platform.h"

namespace gorbex::standin {
namespace {

std::optional<std::string> EnvironmentValue(const char* name) {
  const char* const value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return value;
}

}  // namespace

struct Host::System {
  LinuxPlatform platform{Prefix::Choose(std::nullopt, EnvironmentValue)};
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
