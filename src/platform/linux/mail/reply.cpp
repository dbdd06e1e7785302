#include "platform/linux/mail/reply.h"

#include <cstdint>
#include <utility>

#include "platform/mail_address.h"
#include "platform/runtime_error.h"

namespace gorbex {

Reply::Reply(MailMessage start, std::string name, Correspondent correspondent,
             const FileReader& files, Sender send)
    : message_(std::move(start)),
      name_(std::move(name)),
      correspondent_(std::move(correspondent)),
      files_(files),
      send_(std::move(send)) {}

// Another name is looked up when the mail is sent.
void Reply::AddRecipient(const std::string& name) {
  const bool isCorrespondent = name == name_ && IsMailAddress(correspondent_.address);
  message_.to.push_back(isCorrespondent ? correspondent_ : Correspondent{name, ""});
}

void Reply::RemoveRecipient(std::size_t number) {
  if (number < 1 || number > message_.to.size()) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
  message_.to.erase(message_.to.begin() + static_cast<std::ptrdiff_t>(number) - 1);
}

void Reply::AddAttachment(const std::string& path) {
  // Larger ones no mail server takes, and a mail is made in memory.
  constexpr std::uint64_t kLargest = std::uint64_t{64} << 20U;
  try {
    const auto info = files_.Look(path);
    if (info && info->size > kLargest) throw RuntimeError(ErrorNumber::OutOfMemory, path);
    message_.attachments.push_back({path.substr(path.find_last_of("\\/") + 1), files_.Read(path)});
  } catch (const RuntimeError&) {
    throw RuntimeError(ErrorNumber::FileNotFound, path);
  }
}

void Reply::Send() {
  if (message_.to.empty()) {
    throw RuntimeError::WithDescription(ErrorNumber::InvalidCall, "The mail has no recipient");
  }
  for (Correspondent& to : message_.to) {
    if (to.address.empty()) to = CorrespondentOf(to.name);
  }
  send_(message_);
}

}  // namespace gorbex
