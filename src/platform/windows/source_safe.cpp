#include "platform/windows/source_safe.h"

#include <chrono>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/windows/automation_class.h"

namespace gorbex {
namespace {

constexpr bool kDeletedToo = false;

// A server that takes longer for one step hangs, and an unattended program with it.
constexpr std::chrono::minutes kPatience{30};

class SourceSafeItem : public SourceControlItem {
 public:
  SourceSafeItem(std::shared_ptr<AutomationThread> thread, KeptObject item)
      : thread_(std::move(thread)), item_(std::move(item)) {}

  [[nodiscard]] std::string LocalSpec() const override {
    return thread_->Do([item = item_] { return item->Property("LocalSpec").Text(); });
  }
  [[nodiscard]] SourceItemType Type() const override {
    const auto type = thread_->Do([item = item_] { return item->Property("Type").Long(); });
    return static_cast<SourceItemType>(type);
  }
  [[nodiscard]] std::vector<std::unique_ptr<SourceControlItem>> Items() override;
  [[nodiscard]] bool IsDifferent() override {
    return thread_->Do([item = item_] { return item->Ask("IsDifferent").Bool(); });
  }
  std::string Get(const std::string& localPath, std::uint32_t flags) override {
    Do("Get", {localPath, static_cast<std::int32_t>(flags)});
    return {};
  }
  void Label(const std::string& label, const std::string& comment) override {
    Do("Label", {label, comment});
  }
  void Checkout(const std::string& comment) override { Do("Checkout", {comment}); }
  void Checkin(const std::string& comment) override { Do("Checkin", {comment}); }

 private:
  void Do(const std::string& method, Arguments arguments) {
    thread_->Do(
        [item = item_, method, arguments = std::move(arguments)] { item->Do(method, arguments); });
  }

  std::shared_ptr<AutomationThread> thread_;  // outlives the object
  KeptObject item_;
};

std::vector<KeptObject> ChildrenOf(const Dispatch& project) {
  const auto items = project.Ask("Items", {kDeletedToo}).Object();
  const auto count = items.Property("Count").Long();
  std::vector<KeptObject> children;
  for (std::int32_t number = 1; number <= count; ++number) {
    children.push_back(AutomationThread::Keep(items.Ask("Item", {number}).Object()));
  }
  return children;
}

std::vector<std::unique_ptr<SourceControlItem>> SourceSafeItem::Items() {
  std::vector<std::unique_ptr<SourceControlItem>> items;
  for (auto& child : thread_->Do([item = item_] { return ChildrenOf(*item); })) {
    items.push_back(std::make_unique<SourceSafeItem>(thread_, std::move(child)));
  }
  return items;
}

}  // namespace

void SourceSafe::Open(const std::string& iniPath, const std::string& user,
                      const std::string& password) {
  const auto thread = std::make_shared<AutomationThread>(events_, kPatience);
  auto [database, name] = thread->Do([=] {
    auto opened = MakeObject("SourceSafe");
    opened.Do("Open", {iniPath, user, password});
    auto loggedIn = opened.Property("UserName").Text();
    return std::pair(AutomationThread::Keep(std::move(opened)), std::move(loggedIn));
  });
  database_ = std::move(database);
  thread_ = thread;
  user_ = std::move(name);
}

std::unique_ptr<SourceControlItem> SourceSafe::VSSItem(const std::string& spec) {
  if (!database_) {
    throw RuntimeError::WithDescription(ErrorNumber::AutomationError,
                                        "The source-control database is not open");
  }
  // A copy: while SourceSafe works the user may open another database.
  const auto thread = thread_;
  auto item = thread->Do([database = database_, spec]() -> KeptObject {
    auto found = database->Ask("VSSItem", {spec, kDeletedToo}).Object();
    return found ? AutomationThread::Keep(std::move(found)) : nullptr;
  });
  return item ? std::make_unique<SourceSafeItem>(thread, std::move(item)) : nullptr;
}

}  // namespace gorbex
