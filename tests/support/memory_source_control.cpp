#include "tests/support/memory_source_control.h"

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex::test {

/// What the program holds of an item: every call goes to the database it came from.
class MemorySourceControl::Handle : public SourceControlItem {
 public:
  Handle(MemorySourceControl& database, Item& item) : database_(database), item_(item) {}

  [[nodiscard]] std::string LocalSpec() const override { return item_.localSpec; }
  [[nodiscard]] SourceItemType Type() const override { return item_.type; }

  [[nodiscard]] std::vector<std::unique_ptr<SourceControlItem>> Items() override {
    database_.RaiseInjected("items", item_.spec);
    std::vector<std::unique_ptr<SourceControlItem>> items;
    items.reserve(item_.children.size());
    for (const auto& spec : item_.children) items.push_back(database_.VSSItem(spec));
    return items;
  }

  [[nodiscard]] bool IsDifferent() override {
    database_.RaiseInjected("differs", item_.spec);
    return item_.isDifferent;
  }

  void Get(const std::string& localPath, std::uint32_t flags) override {
    database_.Effect("get", item_.spec, localPath + " " + std::to_string(flags));
  }
  void Label(const std::string& label, const std::string& comment) override {
    database_.Effect("label", item_.spec, label + " " + comment);
  }
  void Checkout(const std::string& comment) override {
    database_.Effect("checkout", item_.spec, comment);
  }
  void Checkin(const std::string& comment) override {
    database_.Effect("checkin", item_.spec, comment);
  }

 private:
  MemorySourceControl& database_;
  Item& item_;
};

MemorySourceControl::Item& MemorySourceControl::Add(const std::string& spec,
                                                    const std::string& localSpec,
                                                    SourceItemType type) {
  const auto above = items_.find(LowerCase(spec.substr(0, spec.rfind('/'))));
  if (above != items_.end()) above->second.children.push_back(spec);
  return items_[LowerCase(spec)] = {spec, localSpec, type, {}, false};
}

void MemorySourceControl::Fail(const std::string& operation, const std::string& spec,
                               const std::string& words) {
  faults_[{operation, LowerCase(spec)}] = words;
}

void MemorySourceControl::RaiseInjected(const std::string& operation,
                                        const std::string& spec) const {
  const auto fault = faults_.find({operation, LowerCase(spec)});
  if (fault == faults_.end()) return;
  throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject, fault->second);
}

void MemorySourceControl::Effect(const std::string& operation, const std::string& spec,
                                 const std::string& details) {
  RaiseInjected(operation, spec);
  journal_.push_back(operation + " " + spec + " " + details);
  if (onEffect) onEffect(operation, spec);
}

void MemorySourceControl::Open(const std::string& iniPath, const std::string& user,
                               const std::string& /*password*/) {
  RaiseInjected("open", iniPath);
  user_ = user.empty() ? defaultUser : user;
  journal_.push_back("open " + iniPath + " " + user_);
}

std::unique_ptr<SourceControlItem> MemorySourceControl::VSSItem(const std::string& spec) {
  if (user_.empty()) {
    throw RuntimeError::WithDescription(ErrorNumber::ObjectNotSet, "The database is not open");
  }
  RaiseInjected("item", spec);
  const auto found = items_.find(LowerCase(spec));
  if (found == items_.end()) return nullptr;
  return std::make_unique<Handle>(*this, found->second);
}

}  // namespace gorbex::test
