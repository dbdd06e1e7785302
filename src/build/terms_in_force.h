#pragma once

#include <string>
#include <vector>

#include "core/main_window.h"
#include "core/options.h"

namespace gorbex {

/// One of the terms of the next build.
struct BuildTerm {
  enum class Weight { Plain, Warning };

  std::string text;  ///< such as "version 2.1.0"
  Command* setBy;    ///< the menu entry that changes it
  Weight weight = Weight::Plain;

  bool operator==(const BuildTerm&) const = default;
};

/// The terms of the next build: always compatibility, version and folder; other settings that
/// change a build only when they are switched on. The menu must outlive the result.
[[nodiscard]] std::vector<BuildTerm> TermsInForce(frmBuilder& window, const clsOptions& options);

/// The terms on one line, such as "Breaks compatibility - version 2.1.0 - to C:\Out\".
[[nodiscard]] std::string TermsLine(const std::vector<BuildTerm>& terms);

}  // namespace gorbex
