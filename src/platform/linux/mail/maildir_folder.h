#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/linux/mail/mail_store.h"

namespace gorbex {

/// A folder of a Maildir. The mail library's own reader is not used: it cuts file names at any "-"
/// and so can put one mail in another's place, and it drops the marks of other programs.
class MaildirFolder : public StoredFolder {
 public:
  explicit MaildirFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// The folder of that name below the inbox, ".Name" or "Name". Nothing when there is none.
  static std::optional<std::filesystem::path> Find(const std::filesystem::path& maildir,
                                                   const std::string& name);

  [[nodiscard]] std::vector<ListedMail> List() override;
  [[nodiscard]] std::optional<std::string> Read(const std::string& id) override;
  void Mark(const std::string& id, MailMark mark) override;

 private:
  [[nodiscard]] std::filesystem::path Locate(const std::string& id) const;

  std::filesystem::path folder_;
};

/// True for a folder with the three folders of a Maildir in it, all of which may be read. The error
/// says why one cannot be read; a missing one is not an error.
[[nodiscard]] bool IsMaildir(const std::filesystem::path& folder, std::error_code& error);

}  // namespace gorbex
