#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/registry_key.h"
#include "platform/registry.h"

namespace gorbex {

/// The registry of a prefix. Wine's system.reg and user.reg are only ever read; what the program
/// writes is in gorbexbuilder.reg beside them and wins over both. All three are read again when
/// they change, which is looked for every few milliseconds at most.
///
/// Wine keeps its registry in memory and writes the files half a minute later or when its last
/// program has ended for some seconds. So after a program under Wine has ended, the registry asks
/// Wine itself for the classes that it may have registered, one part (such as "TypeLib") at a time
/// when it is first needed. The user's own classes, which components rarely use, wait for the file.
///
/// Classes registered by 32-bit programs come first, as for a 32-bit program on 64-bit Windows.
class LinuxRegistry : public Registry {
 public:
  /// The export of a key of the machine; see ExportWineKey().
  using LiveKey = std::function<std::optional<std::string>(const std::string& key)>;

  explicit LinuxRegistry(const std::filesystem::path& prefixRoot, LiveKey live = {});

  /// Throws when an existing file cannot be read: treating it as empty would forget registered
  /// components and allowed senders.
  void RequireReadable() const;

  /// Makes the next query check whether the files changed. Call it when a child process has ended.
  void Recheck() { lastCheck_.reset(); }

  /// As Recheck(), when the child ran under Wine or Wine's files may be out of date for other
  /// reasons.
  void RecheckWine();

  [[nodiscard]] bool HasKey(RegistryRoot root, std::string_view subKey) const override;
  [[nodiscard]] std::optional<RegistryValue> Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const override;
  bool CreateKey(RegistryRoot root, std::string_view subKey) override;

  /// Removes keys of this program's file with everything below them, all of them or none. Also true
  /// when there was none; false when the file cannot be written.
  bool RemoveKeys(RegistryRoot root, const std::vector<std::string>& subKeys);

  /// True when there is a key directly below this one.
  [[nodiscard]] bool HasSubKeys(RegistryRoot root, std::string_view subKey) const;
  bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                const RegistryValue& value) override;
  bool SetValues(RegistryRoot root, const std::vector<RegistryEntry>& entries) override;

 private:
  /// Distinguishes one state of a file from another.
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
    [[nodiscard]] bool HasChanged() const { return mayHaveChanged || CurrentStamp() != stamp; }
    void Load();
  };

  /// The keys that hold a root's entries, in the order in which they are asked.
  using Tops = std::vector<const RegistryKey*>;

  void Refresh() const;
  void AskWine(std::string_view classesKey) const;
  void FindTops() const;
  [[nodiscard]] const Tops& TopsOf(RegistryRoot root) const;
  [[nodiscard]] const Tops& FreshTops(RegistryRoot root, std::string_view subKey) const;
  [[nodiscard]] std::optional<std::string> OwnPath(RegistryRoot root,
                                                   std::string_view subKey) const;
  bool Change(const std::function<bool(RegistryKey& own)>& change);
  bool Save();

  mutable File machine_;
  mutable File user_;
  mutable File own_;
  mutable std::array<Tops, 4> tops_;  ///< of the roots in the order of their handles
  mutable std::optional<std::chrono::steady_clock::time_point> lastCheck_;
  LiveKey live_;
  bool mayLag_ = false;                  ///< Wine's files may be older than its registry
  mutable std::set<std::string> asked_;  ///< parts of the classes that do not lag
};

}  // namespace gorbex
