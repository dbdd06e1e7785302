#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

enum class RegistryRoot : std::uint32_t {
  ClassesRoot = 0x80000000,
  CurrentUser = 0x80000001,
  LocalMachine = 0x80000002,
  Users = 0x80000003,
  PerformanceData = 0x80000004,
};

enum class RegistryType : std::uint32_t {
  Text = 1,
  ExpandText = 2,
  Binary = 3,
  Number = 4,
  MultiText = 7
};

[[nodiscard]] constexpr bool IsText(RegistryType type) {
  return type == RegistryType::Text || type == RegistryType::ExpandText ||
         type == RegistryType::MultiText;
}

/// A value as the registry holds it: texts with their terminating zero in code-page bytes, numbers
/// as four bytes, lowest first.
struct RegistryValue {
  RegistryType type = RegistryType::Text;
  std::string bytes;
  bool operator==(const RegistryValue&) const = default;
};

/// One value and its place below its root.
struct RegistryEntry {
  std::string subKey;
  std::string name;
  RegistryValue value;
};

/// The right to read. Sub-keys are separated by "\"; keys and value names ignore letter case; the
/// empty value name is a key's default value.
class RegistryReader {
 public:
  virtual ~RegistryReader() = default;

  [[nodiscard]] virtual bool HasKey(RegistryRoot root, std::string_view subKey) const = 0;

  /// Nothing when the key or the value is absent or cannot be read.
  [[nodiscard]] virtual std::optional<RegistryValue> Value(RegistryRoot root,
                                                           std::string_view subKey,
                                                           std::string_view name) const = 0;
};

/// The right to write. Both return false when the system refuses; nothing is changed then.
class Registry : public RegistryReader {
 public:
  /// Makes the key with all keys above it; true also when it was there.
  virtual bool CreateKey(RegistryRoot root, std::string_view subKey) = 0;

  /// Sets a value, making its key when absent.
  virtual bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                        const RegistryValue& value) = 0;

  /// Sets many values, in one go where the system allows it. False when one was refused.
  virtual bool SetValues(RegistryRoot root, const std::vector<RegistryEntry>& entries) {
    bool all = true;
    for (const auto& entry : entries) {
      all = SetValue(root, entry.subKey, entry.name, entry.value) && all;
    }
    return all;
  }
};

}  // namespace gorbex
