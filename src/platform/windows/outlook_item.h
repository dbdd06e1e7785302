#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/mail.h"
#include "platform/windows/outlook_session.h"

namespace gorbex {

/// A mail in one of Outlook's folders.
class OutlookItem : public MailItem {
 public:
  OutlookItem(std::shared_ptr<OutlookSession> session, ListedMail mail)
      : session_(std::move(session)), mail_(std::move(mail)) {}

  [[nodiscard]] std::string Subject() const override { return mail_.subject; }
  [[nodiscard]] bool UnRead() const override { return mail_.isUnread; }
  void MarkRead() override;
  [[nodiscard]] bool IsFlagged() const override { return Sender().isFlagged; }
  void Flag() override { Save("FlagStatus", std::int32_t{2}); }
  [[nodiscard]] std::optional<std::string> Body() override;
  [[nodiscard]] std::string SenderName() const override;
  [[nodiscard]] std::string SenderAddress() const override { return Sender().address; }
  [[nodiscard]] std::string ReplyAddress() const override { return Sender().replyAddress; }
  [[nodiscard]] bool IsAutomatic() const override { return Sender().isAutomatic; }

 private:
  struct Origin {
    std::string address;
    std::string replyAddress;
    bool isAutomatic = false;
    bool isFlagged = false;
  };
  static Origin OriginOf(const Dispatch& mail);
  const Origin& Sender() const;
  void Save(const std::string& property, const Argument& value);

  std::shared_ptr<OutlookSession> session_;
  ListedMail mail_;
  mutable std::optional<Origin> origin_;  ///< read when first asked for
};

}  // namespace gorbex
