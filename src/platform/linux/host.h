#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/host.h"
#include "platform/linux/platform.h"

namespace gorbex {

/// A Linux system with the program's prefix.
class LinuxHost : public Host {
 public:
  /// The prefix that is named, else the one that the environment gives. Error when it cannot be
  /// used.
  explicit LinuxHost(const std::optional<std::string>& prefix);

  PlatformServices Services(EventPump& events) override { return platform_.Services(events); }
  [[nodiscard]] std::string TypedPath(const std::string& typed) const override;
  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override;
  [[nodiscard]] std::string FirstFolder() const override;
  [[nodiscard]] std::string HostPath(const std::string& programPath) const override;
  std::shared_ptr<void> ChangeAlone(const std::function<void()>& onWait) override;
  void ListenForEnd() override;
  [[nodiscard]] bool EndWanted() const override;
  void Wait(std::chrono::milliseconds time) override;

 private:
  LinuxPlatform platform_;
  mutable std::map<std::string, std::string> drives_;  ///< folders by the links that lead there
};

}  // namespace gorbex
