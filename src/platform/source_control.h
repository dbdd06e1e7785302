#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gorbex {

enum class SourceItemType { Project = 0, File = 1 };

/// One project or file of the source-control database. Every operation reports failure as a
/// RuntimeError whose description is what the client said.
class SourceControlItem {
 public:
  virtual ~SourceControlItem() = default;

  [[nodiscard]] virtual std::string LocalSpec() const = 0;
  [[nodiscard]] virtual SourceItemType Type() const = 0;
  [[nodiscard]] virtual std::vector<std::unique_ptr<SourceControlItem>> Items() = 0;

  /// True when the working copy differs from the database.
  [[nodiscard]] virtual bool IsDifferent() = 0;

  /// Flags: 0x2000 recursive, 0x20000 keep, 0x4000000 get, added together. Returns what the user
  /// still has to do, empty for nothing.
  virtual std::string Get(const std::string& localPath, std::uint32_t flags) = 0;
  virtual void Label(const std::string& label, const std::string& comment) = 0;
  virtual void Checkout(const std::string& comment) = 0;
  virtual void Checkin(const std::string& comment) = 0;
};

/// A source-control database: SourceSafe, or another client with the same operations.
class SourceControl {
 public:
  virtual ~SourceControl() = default;

  /// Error with the client's words when the database cannot be opened.
  virtual void Open(const std::string& iniPath, const std::string& user,
                    const std::string& password) = 0;

  /// Whether user and password may stay empty for this initialisation file, because the client
  /// knows them from elsewhere. False for a file that cannot be read.
  [[nodiscard]] virtual bool KnowsUsers(const std::string& /*iniPath*/) const { return false; }

  /// The logged-in user; empty while not open.
  [[nodiscard]] virtual std::string UserName() const = 0;

  /// The item of a "$/" spec; null when there is none. Error while not open.
  [[nodiscard]] virtual std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) = 0;

  /// While the result is held, all answers come from one snapshot of the database taken now, so
  /// that many questions cost little. It never fails itself; the questions do.
  [[nodiscard]] virtual std::shared_ptr<void> Snapshot() { return nullptr; }
};

}  // namespace gorbex
