#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/property.h"

namespace gorbex {

/// The states of the plain controls of forms.
struct CheckBox {
  Property<bool> value{false};
  Property<bool> enabled{true};
};

struct TextBox {
  Property<std::string> text;
  Property<bool> visible{false};
  Property<bool> enabled{true};
};

struct ComboBox {
  Property<std::vector<std::string>> items;
  Property<std::optional<std::size_t>> selected;  ///< from 0; nothing while no item is chosen

  /// Empty while no item is chosen.
  [[nodiscard]] std::string Text() const {
    const auto index = selected.Get();
    return index && *index < items.Get().size() ? items.Get()[*index] : std::string();
  }
};

}  // namespace gorbex
