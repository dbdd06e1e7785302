#include "mail/mail_settings.h"

#include "mail/sender_list.h"
#include "platform/mail_address.h"

namespace gorbex::mail_setting {

std::string ProblemWith(std::string_view name, const std::string& value) {
  if (value.empty()) return {};
  const bool isUrl = name == kStore || name == kTransport;
  if (isUrl && value.find("://") == std::string::npos) return "is not a URL such as imaps://host/";
  if (name == kFrom && !NamesMailAddress(value)) {
    return "is not a mail address such as builder@example.com or Builder <builder@example.com>";
  }
  if (name == kAllowedSenders && !SenderList(value).IsClear()) {
    return "takes addresses (jane@example.com) and domains (example.com), separated by commas";
  }
  return {};
}

}  // namespace gorbex::mail_setting
