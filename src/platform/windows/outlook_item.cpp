#include "platform/windows/outlook_item.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/code_page.h"
#include "platform/header_fields.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr const char* kFlagged = "2";

// Empty for a property that an older Outlook does not know or that a mail does not have.
template <class Question>
std::string TextOrNone(Question&& question) {
  try {
    return question();
  } catch (const RuntimeError&) {
    return {};
  }
}

std::string IfMailAddress(std::string text) {
  const auto isControl = [](char letter) { return static_cast<unsigned char>(letter) <= ' '; };
  const bool isAddress = text.find('@') != std::string::npos && !text.starts_with('/') &&
                         std::none_of(text.begin(), text.end(), isControl);
  return isAddress ? text : std::string();
}

// The directory of the sender's organisation has its own form of addresses, and knows the mail
// address as well.
std::string AddressOf(const Dispatch& mail) {
  if (EqualsIgnoringCase(TextIfAny(mail, "SenderEmailType"), "EX")) {
    return IfMailAddress(TextOrNone([&] {
      const auto user = mail.Property("Sender").Object().Ask("GetExchangeUser").Object();
      return user.Property("PrimarySmtpAddress").Text();
    }));
  }
  return IfMailAddress(TextIfAny(mail, "SenderEmailAddress"));
}

std::string WantedReplyAddress(const Dispatch& mail) {
  return TextOrNone([&] {
    const auto wanted = mail.Property("ReplyRecipients").Object();
    if (wanted.Property("Count").Long() < 1) return std::string();
    const auto first = wanted.Ask("Item", {1}).Object();
    auto address = IfMailAddress(TextIfAny(first, "Address"));
    return address.empty() ? first.Property("Name").Text() : address;
  });
}

bool HasKindOfNotices(const Dispatch& mail) {
  const auto kind = LowerCase(TextIfAny(mail, "MessageClass"));
  constexpr std::array<std::string_view, 3> kNotices = {"report", "ipm.schedule",
                                                        "ipm.note.rules."};
  return std::any_of(kNotices.begin(), kNotices.end(),
                     [&](std::string_view notice) { return kind.starts_with(notice); });
}

std::string HeaderOf(const Dispatch& mail) {
  return TextOrNone([&] {
    constexpr const char* kTransportHeader = "http://schemas.microsoft.com/mapi/proptag/0x007D001E";
    const auto properties = mail.Property("PropertyAccessor").Object();
    return properties.Ask("GetProperty", {kTransportHeader}).Text();
  });
}

}  // namespace

OutlookItem::Origin OutlookItem::OriginOf(const Dispatch& mail) {
  if (!mail) return {};
  Origin origin;
  origin.address = AddressOf(mail);
  origin.replyAddress = WantedReplyAddress(mail);
  if (origin.replyAddress.empty()) origin.replyAddress = origin.address;
  // The name is for someone who has no address but is known to Outlook.
  if (origin.replyAddress.empty()) origin.replyAddress = TextIfAny(mail, "SenderName");
  origin.isFlagged = TextIfAny(mail, "FlagStatus") == kFlagged;
  origin.isAutomatic = HasKindOfNotices(mail) || IsAutomaticMail(HeaderOf(mail));
  return origin;
}

const OutlookItem::Origin& OutlookItem::Sender() const {
  if (!origin_) {
    origin_ = session_->thread.Do([nameSpace = session_->nameSpace, mail = mail_] {
      return OriginOf(FindMail(*nameSpace, mail));
    });
  }
  return *origin_;
}

std::string OutlookItem::SenderName() const {
  return mail_.senderName.empty() ? Sender().address : mail_.senderName;
}

void OutlookItem::MarkRead() {
  Save("UnRead", false);
  mail_.isUnread = false;
}

void OutlookItem::Save(const std::string& property, const Argument& value) {
  session_->thread.Do([nameSpace = session_->nameSpace, listed = mail_, property, value] {
    const auto mail = FindMail(*nameSpace, listed);
    if (!mail) return;
    mail.Let(property, value);
    mail.Do("Save");
  });
}

std::optional<std::string> OutlookItem::Body() {
  return session_->thread.Do([nameSpace = session_->nameSpace, listed = mail_] {
    const auto mail = FindMail(*nameSpace, listed);
    return mail ? std::optional(mail.Property("Body").Text()) : std::nullopt;
  });
}

}  // namespace gorbex
