#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/host.h"
#include "platform/linux/end_signal.h"
#include "platform/linux/prefix.h"

namespace gorbex {

/// A Linux system with the program's prefix. Making it chooses the code page of the process.
class LinuxHost : public Host {
 public:
  /// The prefix that is named, else the one that the environment gives. Error when it cannot be
  /// used.
  explicit LinuxHost(const std::optional<std::string>& prefix);
  ~LinuxHost() override;

  [[nodiscard]] const Prefix& GetPrefix() const;

  PlatformServices Services(EventPump& events) override;
  [[nodiscard]] std::string TypedPath(const std::string& typed) const override;
  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override;
  [[nodiscard]] std::string FirstFolder() const override { return HostPath("C:\\"); }
  [[nodiscard]] std::string HostPath(const std::string& programPath) const override;
  std::shared_ptr<void> ChangeAlone(const std::function<void()>& onWait) override;
  void ListenForEnd() override { static_cast<void>(EndSignal::Listen()); }
  [[nodiscard]] bool EndWanted() const override { return EndSignal::Wanted(); }
  void Wait(std::chrono::milliseconds time) override { EndSignal::Wait(time); }

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
  mutable std::map<std::string, std::string> drives_;  ///< folders by the links that lead there
};

}  // namespace gorbex
