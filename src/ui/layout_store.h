#pragma once

#include <string>
#include <vector>

#include "core/registry_tools.h"

namespace gorbex::ui {

/// Remembers sizes of the window's parts, in DIP, beside its position.
class LayoutStore {
 public:
  explicit LayoutStore(RegistryTools& registry) : registry_(registry) {}

  /// Empty when nothing was stored or the stored text is not `count` positive numbers.
  [[nodiscard]] std::vector<int> Read(const std::string& part, std::size_t count) const;
  void Write(const std::string& part, const std::vector<int>& sizes);

 private:
  RegistryTools& registry_;
};

}  // namespace gorbex::ui
