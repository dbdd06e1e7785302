#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "platform/linux/registry_key.h"
#include "platform/registry.h"

namespace gorbex {

/// The registry of a prefix. Wine's system.reg and user.reg are only ever read; what the program
/// writes stands in gorbexbuilder.reg beside them and wins over both. All three are read again when
/// they change, which is looked for every few milliseconds at most.
class LinuxRegistry : public Registry {
 public:
  explicit LinuxRegistry(const std::filesystem::path& prefixRoot);

  /// The next query looks whether the files changed. For when a child process ended.
  void Recheck();

  [[nodiscard]] bool HasKey(RegistryRoot root, std::string_view subKey) const override;
  [[nodiscard]] std::optional<RegistryValue> Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const override;
  bool CreateKey(RegistryRoot root, std::string_view subKey) override;

  /// Removes a key of the own file with everything below it. True also when there was none; false
  /// when the file cannot be written.
  bool RemoveKey(RegistryRoot root, std::string_view subKey);

  /// True when some key stands directly below this one.
  [[nodiscard]] bool HasSubKeys(RegistryRoot root, std::string_view subKey) const;
  bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                const RegistryValue& value) override;
  bool SetValues(RegistryRoot root, const std::vector<RegistryEntry>& entries) override;

 private:
  /// What tells one state of a file from another.
  struct Stamp {
    std::int64_t modified = 0;  ///< nanoseconds
    std::int64_t changed = 0;   ///< nanoseconds
    std::int64_t size = 0;
    std::uint64_t inode = 0;
    bool operator==(const Stamp&) const = default;
  };

  struct File {
    std::string path;
    RegistryKey top;
    std::optional<Stamp> stamp;  ///< nothing while the file is absent
    bool mayHaveChanged = true;  ///< the stamp is too fresh to tell
    bool isReadable = true;
    std::size_t senselessLines = 0;

    [[nodiscard]] std::optional<Stamp> CurrentStamp() const;
    [[nodiscard]] bool HasChanged() const;
    void Load();
  };

  /// Where a root's keys stand, in the order in which they are asked.
  using Tops = std::vector<const RegistryKey*>;

  void Refresh() const;
  void FindTops() const;
  [[nodiscard]] const Tops& TopsOf(RegistryRoot root) const;
  [[nodiscard]] std::optional<std::string> OwnPath(RegistryRoot root,
                                                   std::string_view subKey) const;
  bool Change(const std::function<bool(RegistryKey& own)>& change);
  bool Save();

  mutable File machine_;
  mutable File user_;
  mutable File own_;
  mutable Tops classesTops_;
  mutable Tops userTops_;
  mutable Tops machineTops_;
  mutable Tops usersTops_;
  mutable std::optional<std::chrono::steady_clock::time_point> lastCheck_;
};

}  // namespace gorbex
