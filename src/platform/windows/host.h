#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/code_page.h"
#include "platform/host.h"
#include "platform/windows/end_signal.h"

namespace gorbex {

/// The Windows system that the program runs on. Making it chooses the code page of the process.
class WindowsHost : public Host {
 public:
  /// Null makes objects that show no controls.
  explicit WindowsHost(std::unique_ptr<ComponentObjects> objects = nullptr);
  ~WindowsHost() override;

  PlatformServices Services(EventPump& events) override;
  [[nodiscard]] std::string TypedPath(const std::string& typed) const override;
  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override;
  [[nodiscard]] std::string HostPath(const std::string& programPath) const override {
    return ToUtf8(programPath);
  }
  std::shared_ptr<void> ChangeAlone(const std::function<void()>& onWait) override;
  void ListenForEnd() override { EndSignal::Listen(); }
  [[nodiscard]] bool EndWanted() const override { return EndSignal::Wanted(); }
  void Wait(std::chrono::milliseconds time) override { EndSignal::Wait(time); }

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace gorbex
