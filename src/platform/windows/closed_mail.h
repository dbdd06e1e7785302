#pragma once

#include "platform/mail.h"
#include "platform/runtime_error.h"

namespace gorbex {

/// Stands in for the mail system where the program cannot use one yet: error 429 for everything.
class ClosedMail : public Mail {
 public:
  void Open(const MailAccount& /*account*/) override { Refuse(); }
  [[nodiscard]] std::unique_ptr<MailFolder> Folder(const std::string& /*name*/) override {
    Refuse();
  }
  [[nodiscard]] std::unique_ptr<OutgoingMail> CreateReply(const MailItem& /*to*/) override {
    Refuse();
  }

 private:
  [[noreturn]] static void Refuse() {
    throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject,
                                        "Requests by mail are not served on Windows yet");
  }
};

}  // namespace gorbex
