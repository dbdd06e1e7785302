#pragma once

#include "platform/registry.h"

namespace gorbex {

/// The system's registry, as a 32-bit program sees it when this is one.
class WindowsRegistry : public Registry {
 public:
  [[nodiscard]] bool HasKey(RegistryRoot root, std::string_view subKey) const override;
  [[nodiscard]] std::optional<RegistryValue> Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const override;
  bool CreateKey(RegistryRoot root, std::string_view subKey) override;
  bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                const RegistryValue& value) override;
};

}  // namespace gorbex
