#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/mail/mail_header.h"

namespace gorbex {

/// Only the beginning of a larger mail is read.
inline constexpr std::size_t kMostOfMail = std::size_t{32} << 20U;

/// A mail as the store lists it.
struct ListedMail {
  std::string id;  ///< names the mail in its folder for good
  bool isRead = false;
  bool isFlagged = false;
  MailHeader header;
};

enum class MailMark { Read, Flagged };

/// The request folder where it really is. Everything may block; errors are RuntimeErrors.
class StoredFolder {
 public:
  virtual ~StoredFolder() = default;

  /// The mails in the folder's order, without those marked for deletion.
  [[nodiscard]] virtual std::vector<ListedMail> List() = 0;

  /// The whole mail as it came; nothing when it is gone. Leaves its mark as it is.
  [[nodiscard]] virtual std::optional<std::string> Read(const std::string& id) = 0;

  /// Does nothing when the mail is gone.
  virtual void Mark(const std::string& id, MailMark mark) = 0;
};

}  // namespace gorbex
