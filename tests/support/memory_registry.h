#pragma once

#include <map>
#include <string>

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

  /// Sets without a line in the journal.
  void AddText(RegistryRoot root, const std::string& subKey, const std::string& name,
               const std::string& text);

  /// The text of a value without its zero, "<absent>" when there is none.
  [[nodiscard]] std::string Text(RegistryRoot root, const std::string& subKey,
                                 const std::string& name) const;

  /// While set, every write is refused.
  bool refuses = false;

  [[nodiscard]] bool HasKey(RegistryRoot root, std::string_view subKey) const override;
  [[nodiscard]] std::optional<RegistryValue> Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const override;
  bool CreateKey(RegistryRoot root, std::string_view subKey) override;
  bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                const RegistryValue& value) override;

 private:
  using Values = std::map<std::string, RegistryValue>;

  Values& Key(RegistryRoot root, std::string_view subKey);

  Journal& journal_;
  std::map<std::string, Values> keys_;  ///< by lower-case "ROOT\key"; values by lower-case name
};

}  // namespace gorbex::test
