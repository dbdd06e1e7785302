#pragma once

#include <cstdint>
#include <string>

#include "build/project_value.h"
#include "core/dialogs.h"
#include "core/options.h"
#include "core/procedure.h"

namespace gorbex {

/// Whether a version "x.x.x" can be compared with those of projects, whose numbers are written one
/// after the other and taken as one 32-bit number for that.
[[nodiscard]] bool CanBeStamped(const std::string& version);

/// Writes the requested version into project files.
class VersionStamp {
 public:
  VersionStamp(ProjectValue& values, const clsOptions& options, Dialogs& dialogs)
      : values_(values), options_(options), dialogs_(dialogs) {}

  /// Stamps one project; asks first when its version is newer than the requested one. Runs inside
  /// the procedure given.
  void Stamp(Procedure& on, const std::string& projectPath);

 private:
  [[nodiscard]] bool Wanted(Procedure& on, const std::string& projectPath);
  [[nodiscard]] std::int32_t ExistingVersion(const std::string& projectPath);
  [[nodiscard]] std::int32_t RequestedVersion() const;
  [[nodiscard]] bool AskToStepBack();

  ProjectValue& values_;
  const clsOptions& options_;
  Dialogs& dialogs_;
};

}  // namespace gorbex
