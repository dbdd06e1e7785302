#include "platform/windows/outlook.h"

#include <utility>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/windows/outlook_item.h"
#include "platform/windows/outlook_reply.h"

namespace gorbex {

void Outlook::Open(const MailAccount& /*account*/) {
  session_.reset();
  session_ = OpenOutlook(events_, patience_);
}

std::unique_ptr<MailFolder> Outlook::Folder(const std::string& name) {
  auto session = Session();
  auto mails = ListMails(session, name);
  return std::make_unique<ListedFolder<OutlookItem, OutlookSession, ListedMail>>(std::move(session),
                                                                                 std::move(mails));
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
