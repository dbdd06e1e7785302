#pragma once

#include <string>
#include <string_view>

#include "mail/mail_request.h"

namespace gorbex {

/// The text that answers one request, in the words that its readers' scripts know.
class MailReply {
 public:
  /// The result of the request.
  void Succeed() { outcome_ = "succesfull"; }
  void Fail(std::string_view reason);

  [[nodiscard]] static std::string Subject(const MailRequest& request, bool succeeded);
  [[nodiscard]] std::string Body(const MailRequest& request, bool succeeded) const;

 private:
  std::string outcome_;
};

}  // namespace gorbex
