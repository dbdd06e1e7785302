#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/source_control.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A source-control database in memory whose files can be got. Journals "open INI USER" and
/// "get SPEC LOCALPATH FLAGS".
class MemorySourceControl : public SourceControl {
 public:
  explicit MemorySourceControl(Journal& journal) : journal_(journal) {}

  std::map<std::string, std::string> localSpecs;  ///< of the files, by spec

  /// What the client says when the operation ("item" or "get") on the spec is to fail.
  std::map<std::pair<std::string, std::string>, std::string> failures;

  void Open(const std::string& iniPath, const std::string& user,
            const std::string& /*password*/) override {
    user_ = user;
    journal_.push_back("open " + iniPath + " " + user);
  }
  [[nodiscard]] std::string UserName() const override { return user_; }

  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override {
    if (user_.empty()) Raise("The database is not open");
    RaiseFailure("item", spec);
    return localSpecs.contains(spec) ? std::make_unique<File>(*this, spec) : nullptr;
  }

 private:
  class File : public SourceControlItem {
   public:
    File(MemorySourceControl& database, std::string spec)
        : database_(database), spec_(std::move(spec)) {}

    [[nodiscard]] std::string LocalSpec() const override { return database_.localSpecs.at(spec_); }
    [[nodiscard]] SourceItemType Type() const override { return SourceItemType::File; }
    [[nodiscard]] std::vector<std::unique_ptr<SourceControlItem>> Items() override { return {}; }
    [[nodiscard]] bool IsDifferent() override { return false; }
    void Get(const std::string& localPath, std::uint32_t flags) override {
      database_.RaiseFailure("get", spec_);
      database_.journal_.push_back("get " + spec_ + " " + localPath + " " + std::to_string(flags));
    }
    void Label(const std::string& /*label*/, const std::string& /*comment*/) override {}
    void Checkout(const std::string& /*comment*/) override {}
    void Checkin(const std::string& /*comment*/) override {}

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

  Journal& journal_;
  std::string user_;
};

}  // namespace gorbex::test
