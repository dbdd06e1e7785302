#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "core/procedure.h"
#include "core/registry_tools.h"
#include "core/setting.h"

namespace gorbex {

/// The largest value of Jobs.
inline constexpr std::int32_t kMostJobs = 64;

/// The program's settings. All but VersionComponents and WatchSource are kept in the registry; an
/// open build project overrides some of them.
class clsOptions {
 public:
  clsOptions(RegistryTools& registry, ErrorReport& report);

  /// Reads the stored settings. False when an error was answered with Abort: those after it were
  /// not read.
  bool LoadSettings();

  /// Writes all settings, except a setting that could not be read and was not changed since; its
  /// stored value stays.
  void SaveSettings();

  /// Limits Interval to a minute. True when it was longer.
  bool LimitInterval();

  /// The Interval in milliseconds, as a timer wants it. Error 6 when no timer can hold it.
  [[nodiscard]] std::int32_t TimerInterval() const;

  /// The number of compilers that may run side by side, at least 1.
  [[nodiscard]] std::size_t Places() const;

  /// Writes one setting. False when the registry does not give it back.
  [[nodiscard]] bool Store(const Setting& setting);

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
  bool SkipUsersOfFailed = false;
  bool SkipUpToDate = false;
  std::int32_t Jobs = 1;  ///< compilers that run side by side; 0 for as many as processors
  std::string Editor;     ///< opens sources, as EditorCallOf reads it; empty for the system's way

 private:
  void Load(std::size_t number);
  void Save(std::size_t number);

  RegistryTools& registry_;
  ErrorReport& report_;

  /// The text that each setting had when it could not be read; nothing when it was read or saved.
  std::array<std::optional<std::string>, kSettings> unread_;
};

}  // namespace gorbex
