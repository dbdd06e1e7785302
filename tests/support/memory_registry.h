#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>

#include "platform/code_page.h"
#include "platform/registry.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// Where the program keeps its settings, below the current user.
inline const std::string kSettingsKey = "Software\\Tovarren\\GorbexBuilder";

/// A registry in memory. Journals "registry HKEY_CURRENT_USER\Software\... name=value" for each
/// value set (numbers and bytes in hexadecimal) and "registry ROOT\KEY" for each key made.
class MemoryRegistry : public Registry {
 public:
  explicit MemoryRegistry(Journal& journal) : journal_(journal) {}

  bool refuses = false;         ///< every write, while set
  std::function<bool()> fails;  ///< asked by each operation whether it is to find or do nothing

  /// Sets without a line in the journal.
  void AddText(RegistryRoot root, const std::string& subKey, const std::string& name,
               const std::string& text) {
    Key(root, subKey)[LowerCase(name)] = {RegistryType::Text, text + '\0'};
  }

  /// The text of a value without its zero, "<absent>" when there is none.
  [[nodiscard]] std::string Text(RegistryRoot root, const std::string& subKey,
                                 const std::string& name) const {
    const auto value = Value(root, subKey, name);
    return value ? Shown(*value) : "<absent>";
  }

  [[nodiscard]] bool HasKey(RegistryRoot root, std::string_view subKey) const override {
    return !Fails() && keys_.contains(LowerCase(PathOf(root, subKey)));
  }
  [[nodiscard]] std::optional<RegistryValue> Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const override {
    if (Fails()) return std::nullopt;
    const auto key = keys_.find(LowerCase(PathOf(root, subKey)));
    if (key == keys_.end()) return std::nullopt;
    const auto value = key->second.find(LowerCase(name));
    return value == key->second.end() ? std::nullopt : std::optional(value->second);
  }
  bool CreateKey(RegistryRoot root, std::string_view subKey) override {
    if (Fails()) return false;
    if (keys_.contains(LowerCase(PathOf(root, subKey)))) return true;
    if (refuses) return false;
    Key(root, subKey);
    journal_.push_back("registry " + PathOf(root, subKey));
    return true;
  }
  bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                const RegistryValue& value) override {
    if (Fails() || refuses) return false;
    Key(root, subKey)[LowerCase(name)] = value;
    journal_.push_back("registry " + PathOf(root, subKey) + " " + std::string(name) + "=" +
                       Shown(value));
    return true;
  }

 private:
  using Values = std::map<std::string, RegistryValue>;

  static std::string PathOf(RegistryRoot root, std::string_view subKey) {
    if (subKey.ends_with('\\')) subKey.remove_suffix(1);
    constexpr std::array kNames = {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE",
                                   "HKEY_USERS", "HKEY_PERFORMANCE_DATA"};
    const auto first = static_cast<std::uint32_t>(RegistryRoot::ClassesRoot);
    return std::string(kNames.at(static_cast<std::uint32_t>(root) - first))
        .append(subKey.empty() ? "" : "\\")
        .append(subKey);
  }

  static std::string Shown(const RegistryValue& value) {
    if (value.type == RegistryType::Text) return value.bytes.substr(0, value.bytes.find('\0'));
    std::string text;
    for (const char byte : value.bytes) {
      text += "0123456789abcdef"[static_cast<unsigned char>(byte) >> 4U];
      text += "0123456789abcdef"[static_cast<unsigned char>(byte) & 0xFU];
    }
    return text;
  }

  [[nodiscard]] bool Fails() const { return fails && fails(); }

  /// Makes the key, and those above it, when it is not there.
  Values& Key(RegistryRoot root, std::string_view subKey) {
    const auto end = subKey.rfind('\\');
    if (end != std::string_view::npos) Key(root, subKey.substr(0, end));
    return keys_[LowerCase(PathOf(root, subKey))];
  }

  Journal& journal_;
  std::map<std::string, Values> keys_;  ///< by lower-case "ROOT\key"; values by lower-case name
};

}  // namespace gorbex::test
