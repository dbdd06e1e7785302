#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/source_control.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A source-control database in memory. Journals "open INI USER", "get SPEC LOCALPATH FLAGS",
/// "label SPEC LABEL COMMENT", "checkout SPEC COMMENT" and "checkin SPEC COMMENT".
class MemorySourceControl : public SourceControl {
 public:
  struct Item {
    std::string spec;
    std::string localSpec;
    SourceItemType type = SourceItemType::File;
    std::vector<std::string> children;  ///< specs, in order
    bool isDifferent = false;
  };

  explicit MemorySourceControl(Journal& journal) : journal_(journal) {}

  /// Adds an item below the one its spec names, when that is there. The reference stays valid.
  Item& Add(const std::string& spec, const std::string& localSpec,
            SourceItemType type = SourceItemType::File);

  /// Lets every operation of that name ("open", "item", "items", "differs", "get", "label",
  /// "checkout", "checkin") on the spec (the initialisation file for "open") fail with the words.
  void Fail(const std::string& operation, const std::string& spec, const std::string& words);

  /// Called after every journalled operation on an item, with the operation and the spec.
  std::function<void(const std::string& operation, const std::string& spec)> onEffect;

  /// The user logged in when Open names none.
  std::string defaultUser = "builder";

  void Open(const std::string& iniPath, const std::string& user,
            const std::string& password) override;
  [[nodiscard]] std::string UserName() const override { return user_; }
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override;

 private:
  class Handle;

  void RaiseInjected(const std::string& operation, const std::string& spec) const;
  void Effect(const std::string& operation, const std::string& spec, const std::string& details);

  Journal& journal_;
  std::string user_;
  std::map<std::string, Item> items_;  ///< by lower-case spec
  std::map<std::pair<std::string, std::string>, std::string> faults_;
};

}  // namespace gorbex::test
