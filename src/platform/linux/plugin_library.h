#pragma once

#include <memory>
#include <optional>
#include <string>

#include "gorbex_plugin.h"

namespace gorbex {

/// One class of a plug-in: its checked functions, and what keeps their code loaded.
struct PluginClass {
  std::shared_ptr<void> library;
  GorbexClass calls{};
  std::optional<GorbexControl> control;  ///< only of a user control
};

/// Loads the shared library with that absolute host path and asks it for a class. Error 429 when
/// there is no such class to be had; its description is only the reason and calls the file by its
/// `shownName`.
[[nodiscard]] PluginClass LoadPluginClass(const std::string& hostPath, const std::string& shownName,
                                          const std::string& clsid);

}  // namespace gorbex
