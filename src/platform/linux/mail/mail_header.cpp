#include "platform/linux/mail/mail_header.h"
#include "platform/code_page.h"

#include <exception>
#include <vmime/addressList.hpp>
#include <vmime/mailbox.hpp>
#include <vmime/mailboxGroup.hpp>
#include <vmime/mailboxList.hpp>
#include <vmime/text.hpp>

#include "platform/header_fields.h"
#include "platform/linux/mail/character_set.h"
#include "platform/mail_address.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

struct Sender {
  std::string name;
  std::string address;
};

std::string LineOf(const std::string& text) {
  return std::string(Trimmed(OnOneLine(text), " "));
}

std::string Text(const vmime::text& words) {
  std::string text;
  for (const auto& word : words.getWordList()) {
    const auto name = word->getCharset().getName();
    // Words that are not encoded are said to be ASCII, whatever they hold.
    text += name == vmime::charsets::US_ASCII ? FromAnyCharacterSet(word->getBuffer())
                                              : FromCharacterSet(word->getBuffer(), name);
  }
  return LineOf(text);
}

std::string Decoded(const std::string& value) {
  try {
    return Text(*vmime::text::decodeAndUnfold(value));
  } catch (const std::exception&) {
    return LineOf(FromAnyCharacterSet(value));
  }
}

vmime::shared_ptr<const vmime::mailbox> FirstMailbox(const vmime::addressList& addresses) {
  for (const auto& address : addresses.getAddressList()) {
    if (!address->isGroup()) return vmime::dynamicCast<const vmime::mailbox>(address);
    const auto group = vmime::dynamicCast<const vmime::mailboxGroup>(address);
    if (!group->isEmpty()) return group->getMailboxAt(0);
  }
  return nullptr;
}

// The content of a field without an address: only the name.
std::string NameAlone(const std::string& value) {
  auto name = Decoded(value.substr(0, value.find('<')));
  if (name.size() > 1 && name.front() == '"' && name.back() == '"') {
    name = name.substr(1, name.size() - 2);
  }
  return name;
}

Sender ReadSender(const std::string& value) {
  if (value.find('@') == std::string::npos) return {NameAlone(value), {}};
  try {
    vmime::addressList addresses;
    addresses.parse(value);
    const auto mailbox = FirstMailbox(addresses);
    if (mailbox == nullptr) return {Decoded(value), {}};
    const auto name = Text(mailbox->getName());
    // The library's own text of an address encodes what none can hold, and loses memory over it.
    const auto& email = mailbox->getEmail();
    const auto address = email.getLocalName().getBuffer() + "@" + email.getDomainName().getBuffer();
    // The library adds this machine's name to a text that is not an address.
    if (!IsMailAddress(address) || value.find(address) == std::string::npos) {
      return {name.empty() ? Decoded(value) : name, {}};
    }
    return {name.empty() ? address : name, address};
  } catch (const std::exception&) {
    return {LineOf(FromAnyCharacterSet(value)), {}};
  }
}

}  // namespace

MailHeader ReadMailHeader(std::string_view header) {
  header = header.substr(0, EndOfHeader(header));
  MailHeader read;
  read.subject = Decoded(FieldOf(header, "Subject").value_or(""));
  auto from = FieldOf(header, "From");
  if (!from || from->empty()) from = FieldOf(header, "Sender");
  const auto sender = ReadSender(from.value_or(""));
  read.senderName = sender.name;
  read.senderAddress = sender.address;
  read.replyAddress = ReadSender(FieldOf(header, "Reply-To").value_or("")).address;
  if (read.replyAddress.empty()) read.replyAddress = sender.address;
  read.messageId = FieldOf(header, "Message-ID").value_or("");
  read.references = FieldOf(header, "References").value_or("");
  read.isAutomatic = IsAutomaticMail(header);
  return read;
}

}  // namespace gorbex
