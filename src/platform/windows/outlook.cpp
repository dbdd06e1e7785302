#include "platform/windows/outlook.h"

#include <utility>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/windows/outlook_item.h"
#include "platform/windows/outlook_reply.h"

namespace gorbex {
namespace {

class OutlookFolder : public MailFolder {
 public:
  OutlookFolder(std::shared_ptr<OutlookSession> session, std::vector<ListedMail> mails)
      : session_(std::move(session)), mails_(std::move(mails)) {}

  [[nodiscard]] std::size_t Count() const override { return mails_.size(); }
  [[nodiscard]] std::unique_ptr<MailItem> Item(std::size_t number) override {
    if (number < 1 || number > mails_.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return std::make_unique<OutlookItem>(session_, mails_[number - 1]);
  }

 private:
  std::shared_ptr<OutlookSession> session_;
  std::vector<ListedMail> mails_;
};

}  // namespace

void Outlook::Open(const MailAccount& /*account*/) {
  session_.reset();
  session_ = OpenOutlook(events_, patience_);
}

std::unique_ptr<MailFolder> Outlook::Folder(const std::string& name) {
  auto session = Session();
  auto mails = ListMails(session, name);
  return std::make_unique<OutlookFolder>(std::move(session), std::move(mails));
}

std::unique_ptr<OutgoingMail> Outlook::CreateReply(const MailItem& to) {
  return std::make_unique<OutlookReply>(Session(), to, files_);
}

std::shared_ptr<OutlookSession> Outlook::Session() const {
  if (session_) return session_;
  throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject,
                                      "The mail system is not open");
}

}  // namespace gorbex
