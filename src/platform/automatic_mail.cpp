#include "platform/automatic_mail.h"

#include <string>

#include "platform/code_page.h"
#include "platform/header_fields.h"

namespace gorbex {

bool IsAutomaticMail(std::string_view header) {
  const auto lower = [&](const char* name) {
    return LowerCase(FieldOf(header, name).value_or(""));
  };
  const auto submitted = lower("Auto-Submitted");
  if (!submitted.empty() && submitted.substr(0, submitted.find_first_of("; (")) != "no") {
    return true;
  }
  const auto precedence = lower("Precedence");
  for (const char* kind : {"bulk", "junk", "list", "auto_reply"}) {
    if (precedence.substr(0, precedence.find_first_of("; (")) == kind) return true;
  }
  if (lower("From").find("mailer-daemon@") != std::string::npos) return true;
  std::string path = lower("Return-Path");
  std::erase(path, ' ');
  return path == "<>" || FieldOf(header, "List-Id").has_value();
}

}  // namespace gorbex
