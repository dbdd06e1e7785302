#pragma once

#include <string>
#include <vector>

namespace gorbex {

/// Somebody a mail goes to or comes from, as a mail names them: UTF-8.
struct Correspondent {
  std::string name;  ///< may be empty
  std::string address;
};

/// The correspondent that "a@b" or "Name <a@b>" names (code page). Error 5 when it names none.
[[nodiscard]] Correspondent CorrespondentOf(const std::string& text);

struct Attachment {
  std::string name;  ///< only of the file, code page
  std::string bytes;
};

/// A mail before it is sent; texts are in the code page.
struct MailMessage {
  Correspondent from;
  std::vector<Correspondent> to{};
  std::string subject{};
  std::string body{};
  std::vector<Attachment> attachments{};
  std::string answered{};    ///< message id of the mail that is answered
  std::string references{};  ///< the message ids that mail refers to
};

/// The message as it travels: seven-bit text with CR LF, marked as sent by a program.
[[nodiscard]] std::string Written(const MailMessage& message);

}  // namespace gorbex
