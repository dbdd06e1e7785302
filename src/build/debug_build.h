#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "build/project_value.h"
#include "build/replaced_values.h"
#include "core/options.h"
#include "core/procedure.h"

namespace gorbex {

/// The debug values that a debug build gives one project for the time of its compile. The replaced
/// values are written back at the end, also when an error ends the run early.
class DebugBuild {
 public:
  DebugBuild(const clsOptions& options, ProjectValue& values, ReplacedValues& replaced,
             std::string path);
  ~DebugBuild();
  DebugBuild(const DebugBuild&) = delete;
  DebugBuild& operator=(const DebugBuild&) = delete;

  [[nodiscard]] bool IsWanted() const;

  void Set(Procedure& on);

  /// Writes back what was replaced. A project keeps its present values when debug builds were
  /// switched off meanwhile.
  void Undo(Procedure& on);

 private:
  /// A value that could not be read is not changed, because it could not be written back.
  using Values = std::array<std::optional<std::int32_t>, 2>;

  [[nodiscard]] std::optional<std::int32_t> Present(std::string_view key);
  void Write(const Values& values);

  const clsOptions& options_;
  ProjectValue& values_;
  ReplacedValues& replaced_;
  std::string path_;
  std::optional<Values> kept_;  ///< what is to be written back
};

}  // namespace gorbex
