#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/source_control.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A source-control database in memory. Journals "open INI USER", "get SPEC LOCALPATH FLAGS",
/// "label SPEC LABEL COMMENT", "checkout SPEC COMMENT" and "checkin SPEC COMMENT".
class MemorySourceControl : public SourceControl {
 public:
  explicit MemorySourceControl(Journal& journal) : journal_(journal) {}

  /// A file as each side has it; nothing where it is not there.
  struct Sides {
    std::optional<std::string> database{};
    std::optional<std::string> working{};
    std::optional<std::string> got{};  ///< what the working copy was last made from
  };
  std::map<std::string, Sides> files;  ///< by spec

  /// The places of items that are not below C:\Work; one with no files is itself a file.
  std::map<std::string, std::string> localSpecs;

  std::set<std::string> labels;
  std::string toDo;  ///< what every get leaves to the user
  int outages = 0;   ///< so many logins fail, then they succeed again

  /// What the client says when the operation ("open", "item", "items", "type", "differs", "get",
  /// "label", "checkout" or "checkin") on the spec (or initialisation file) is to fail.
  std::map<std::pair<std::string, std::string>, std::string> failures;

  void Open(const std::string& iniPath, const std::string& user,
            const std::string& /*password*/) override {
    if (outages > 0 && outages-- > 0) Raise("The server is gone");
    Note("open", iniPath, user);
    user_ = user;
  }
  [[nodiscard]] std::string UserName() const override { return user_; }

  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override {
    if (user_.empty()) Raise("The database is not open");
    RaiseFailure("item", spec);
    const bool isKnown = files.contains(spec) || localSpecs.contains(spec) || IsFolder(spec);
    return isKnown ? std::make_unique<Item>(*this, spec) : nullptr;
  }

 private:
  class Item : public SourceControlItem {
   public:
    Item(MemorySourceControl& database, std::string spec)
        : database_(database), spec_(std::move(spec)) {}

    [[nodiscard]] std::string LocalSpec() const override { return database_.LocalSpec(spec_); }
    [[nodiscard]] SourceItemType Type() const override {
      database_.RaiseFailure("type", spec_);
      return database_.IsFolder(spec_) ? SourceItemType::Project : SourceItemType::File;
    }
    [[nodiscard]] std::vector<std::unique_ptr<SourceControlItem>> Items() override {
      database_.RaiseFailure("items", spec_);
      std::set<std::string> children;
      const auto start = Below(spec_);
      for (const auto& entry : database_.files) {
        const std::string& spec = entry.first;
        if (!entry.second.database || !spec.starts_with(start)) continue;
        children.insert(spec.substr(0, spec.find('/', start.size())));
      }
      std::vector<std::unique_ptr<SourceControlItem>> items;
      items.reserve(children.size());
      for (const auto& child : children) items.push_back(std::make_unique<Item>(database_, child));
      return items;
    }
    [[nodiscard]] bool IsDifferent() override {
      database_.RaiseFailure("differs", spec_);
      return database_.files[spec_].database != database_.files[spec_].working;
    }
    std::string Get(const std::string& localPath, std::uint32_t flags) override {
      database_.Note("get", spec_, localPath + " " + std::to_string(flags));
      database_.BringUpToDate(spec_);
      return database_.toDo;
    }
    void Label(const std::string& label, const std::string& comment) override {
      database_.Note("label", spec_, label + " " + comment);
      if (!database_.labels.insert(label).second) Raise("The label " + label + " exists already");
    }
    void Checkout(const std::string& comment) override {
      database_.Note("checkout", spec_, comment);
      const auto& sides = database_.files[spec_];
      if (sides.working != sides.got) Raise(spec_ + " is changed");
      database_.BringUpToDate(spec_);
    }
    void Checkin(const std::string& comment) override {
      database_.Note("checkin", spec_, comment);
      auto& sides = database_.files[spec_];
      sides.database = sides.got = sides.working;
    }

   private:
    MemorySourceControl& database_;
    std::string spec_;
  };

  [[noreturn]] static void Raise(const std::string& words) {
    throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject, words);
  }
  void RaiseFailure(const std::string& operation, const std::string& spec) const {
    const auto failure = failures.find({operation, spec});
    if (failure != failures.end()) Raise(failure->second);
  }
  void Note(const std::string& operation, const std::string& spec, const std::string& rest) {
    RaiseFailure(operation, spec);
    journal_.push_back(operation + " " + spec + " " + rest);
  }

  static std::string Below(const std::string& spec) {
    return spec.ends_with('/') ? spec : spec + "/";
  }
  [[nodiscard]] bool IsFolder(const std::string& spec) const {
    const auto next = files.lower_bound(Below(spec));
    return next != files.end() && next->first.starts_with(Below(spec));
  }
  [[nodiscard]] std::string LocalSpec(const std::string& spec) const {
    const auto named = localSpecs.find(spec);
    if (named != localSpecs.end()) return named->second;
    auto path = "C:\\Work" + spec.substr(1);
    for (char& letter : path) letter = letter == '/' ? '\\' : letter;
    return path;
  }
  void BringUpToDate(const std::string& item) {
    for (auto& [spec, sides] : files) {
      if ((spec != item && !spec.starts_with(Below(item))) || sides.database == sides.got) continue;
      if (sides.working != sides.got) Raise(spec + " is changed");
      sides.working = sides.got = sides.database;
    }
  }

  Journal& journal_;
  std::string user_;
};

}  // namespace gorbex::test
