#pragma once

#include <string>

#include "platform/registry.h"

namespace gorbex::test {

inline RegistryValue TextValue(const std::string& text) {
  return {RegistryType::Text, text + '\0'};
}

inline std::string TextOf(const RegistryReader& registry, RegistryRoot root, const std::string& key,
                          const char* name) {
  const auto value = registry.Value(root, key, name);
  return value ? value->bytes.substr(0, value->bytes.find('\0')) : "<absent>";
}

}  // namespace gorbex::test
