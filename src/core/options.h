#pragma once

#include <cstdint>
#include <string>

#include "core/procedure.h"
#include "core/registry_tools.h"

namespace gorbex {

/// The program's settings. All but VersionComponents and WatchSource are kept in the registry; an
/// open build project overrides some of them.
class clsOptions {
 public:
  clsOptions(RegistryTools& registry, ErrorReport& report) : registry_(registry), report_(report) {}

  void LoadSettings();
  void SaveSettings();

  /// Lowers a longer Interval to a minute, the longest there may be. True when it was longer.
  bool LimitInterval();

  /// The Interval in milliseconds, as a timer wants it. Error 6 when no timer can hold it.
  [[nodiscard]] std::int32_t TimerInterval() const;

  /// The three numbers of VersionComponents. Major is 0 without a "."; Minor without a "." is an
  /// error, reported by itself; Revision is 0 when there is no third field.
  [[nodiscard]] std::int32_t Major() const;
  [[nodiscard]] std::int32_t Minor() const;
  [[nodiscard]] std::int32_t Revision() const;

  std::string VersionComponents;     ///< "x.x.x"; empty keeps each project's own version
  std::string DebugBuild = "False";  ///< "True" or "False"
  std::string AutoLaunchName;
  bool AutoLaunchVBP = false;
  std::string WatchFolder;
  bool AutoBuildDependant = false;
  std::string ReplyUser;
  std::int16_t ReplyTo = 0;
  bool WatchSource = false;
  std::string BuildPath;
  bool StopProcessing = false;
  bool ChangeRefs = false;
  bool Compatible = false;
  bool GetLatest = false;
  bool AutoStart = false;
  std::int32_t Interval = 0;  ///< seconds

 private:
  [[nodiscard]] std::string Read(std::string_view name) const;
  void Write(std::string_view name, std::string_view value);
  [[nodiscard]] std::int32_t Guarded(std::string_view procedure,
                                     std::int32_t (clsOptions::*value)() const) const;
  [[nodiscard]] std::int32_t MajorValue() const;
  [[nodiscard]] std::int32_t MinorValue() const;
  [[nodiscard]] std::int32_t RevisionValue() const;

  RegistryTools& registry_;
  ErrorReport& report_;
};

}  // namespace gorbex
