#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/host.h"
#include "platform/windows/platform.h"

namespace gorbex {

/// The Windows system that the program runs on.
class WindowsHost : public Host {
 public:
  WindowsHost() = default;

  /// With another maker of objects, such as one that shows controls.
  explicit WindowsHost(std::unique_ptr<ComponentObjects> objects) : platform_(std::move(objects)) {}

  PlatformServices Services(EventPump& events) override { return platform_.Services(events); }
  [[nodiscard]] std::string TypedPath(const std::string& typed) const override;
  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override;
  [[nodiscard]] std::string HostPath(const std::string& programPath) const override;
  std::shared_ptr<void> ChangeAlone(const std::function<void()>& onWait) override;
  void ListenForEnd() override;
  [[nodiscard]] bool EndWanted() const override;
  void Wait(std::chrono::milliseconds time) override;

 private:
  WindowsPlatform platform_;
};

}  // namespace gorbex
