#include "platform/linux/mail/mail_message.h"

#include <algorithm>
#include <vmime/contentDispositionField.hpp>
#include <vmime/vmime.hpp>

#include "platform/code_page.h"
#include "platform/mail_address.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

const vmime::charset& Utf8() {
  static const vmime::charset set(vmime::charsets::UTF_8);
  return set;
}

vmime::mailbox MailboxOf(const Correspondent& correspondent) {
  const vmime::emailAddress address(correspondent.address);
  if (correspondent.name.empty()) return vmime::mailbox(address);
  const auto name = OnOneLine(correspondent.name);
  // Of several encoded words readers leave out the blanks between them.
  return {IsAscii(name) ? vmime::text(name, Utf8()) : vmime::text(vmime::word(name, Utf8())),
          address};
}

// A message id as it may be in a header; anything else is left out.
bool IsMessageId(const std::string& text) {
  return text.size() < 256 && text.find('@') != std::string::npos && text.starts_with('<') &&
         text.ends_with('>') && std::all_of(text.begin(), text.end(), [](char letter) {
           return letter > ' ' && letter < 0x7F;
         });
}

std::vector<std::string> References(const MailMessage& message) {
  constexpr std::size_t kMost = 20;
  std::vector<std::string> ids;
  std::istringstream words(message.references + " " + message.answered);
  for (std::string word; words >> word;) {
    if (IsMessageId(word)) ids.push_back(word);
  }
  if (ids.size() > kMost) ids.erase(ids.begin(), ids.end() - kMost);
  return ids;
}

std::string NewMessageId(const std::string& address) {
  std::array<unsigned char, 16> bytes{};
  vmime::platform::getHandler()->generateRandomBytes(bytes.data(), bytes.size());
  constexpr const char* kDigits = "0123456789abcdef";
  std::string id = "<";
  for (const auto byte : bytes) id.append({kDigits[byte / 16], kDigits[byte % 16]});
  return id + address.substr(address.find('@')) + ">";
}

void WriteHeader(vmime::header& header, const MailMessage& message) {
  header.From()->setValue(MailboxOf(message.from));
  vmime::addressList to;
  for (const auto& recipient : message.to) {
    to.appendAddress(vmime::make_shared<vmime::mailbox>(MailboxOf(recipient)));
  }
  header.To()->setValue(to);
  header.Subject()->setValue(
      *vmime::text::newFromString(ToUtf8(OnOneLine(message.subject)), Utf8()));
  header.Date()->setValue(vmime::datetime::now());
  header.MessageId()->setValue(vmime::messageId(NewMessageId(message.from.address)));
  vmime::messageIdSequence references;
  for (const auto& id : References(message)) {
    references.appendMessageId(vmime::make_shared<vmime::messageId>(id));
  }
  if (!references.isEmpty()) header.References()->setValue(references);
  if (IsMessageId(message.answered)) {
    vmime::messageIdSequence answered;
    answered.appendMessageId(vmime::make_shared<vmime::messageId>(message.answered));
    header.InReplyTo()->setValue(answered);
  }
  header.MimeVersion()->setValue(vmime::string("1.0"));
  header.getField("Auto-Submitted")->setValue(vmime::string("auto-replied"));
}

void WriteText(vmime::bodyPart& part, const std::string& text) {
  const vmime::encoding encoding(vmime::encodingTypes::QUOTED_PRINTABLE,
                                 vmime::encoding::USAGE_TEXT);
  part.getBody()->setContents(vmime::make_shared<vmime::stringContentHandler>(ToUtf8(text)),
                              vmime::mediaType("text", "plain"), Utf8(), encoding);
}

void WriteAttachment(vmime::bodyPart& part, const Attachment& attachment) {
  const vmime::word name(ToUtf8(OnOneLine(attachment.name)), Utf8());
  part.getBody()->setContents(vmime::make_shared<vmime::stringContentHandler>(attachment.bytes),
                              vmime::mediaType("application", "octet-stream"));
  part.getBody()->setEncoding(vmime::encoding(vmime::encodingTypes::BASE64));
  const auto disposition = part.getHeader()->getField<vmime::contentDispositionField>(
      vmime::fields::CONTENT_DISPOSITION);
  disposition->setValue(vmime::contentDisposition(vmime::contentDispositionTypes::ATTACHMENT));
  disposition->setFilename(name);
}

}  // namespace

Correspondent CorrespondentOf(const std::string& text) {
  Correspondent correspondent;
  try {
    vmime::mailbox mailbox;
    mailbox.parse(ToUtf8(text));
    correspondent.name = mailbox.getName().getWholeBuffer();
    correspondent.address = mailbox.getEmail().toString();
  } catch (const std::exception&) {
    correspondent.address.clear();
  }
  // The library adds this machine's name to a text that is not an address.
  const bool isGiven = text.find(correspondent.address) != std::string::npos;
  if (isGiven && IsMailAddress(correspondent.address) &&
      text.find_first_of("\r\n") == std::string::npos) {
    return correspondent;
  }
  throw RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                      "cannot resolve recipient '" + OnOneLine(text) + "'");
}

std::string Written(const MailMessage& message) {
  const auto mail = vmime::make_shared<vmime::message>();
  WriteHeader(*mail->getHeader(), message);
  if (message.attachments.empty()) {
    WriteText(*mail, message.body);
  } else {
    mail->getBody()->setContentType(
        vmime::mediaType(vmime::mediaTypes::MULTIPART, vmime::mediaTypes::MULTIPART_MIXED));
    const auto text = vmime::make_shared<vmime::bodyPart>();
    WriteText(*text, message.body);
    mail->getBody()->appendPart(text);
    for (const auto& attachment : message.attachments) {
      const auto part = vmime::make_shared<vmime::bodyPart>();
      WriteAttachment(*part, attachment);
      mail->getBody()->appendPart(part);
    }
  }
  return mail->generate();
}

}  // namespace gorbex
