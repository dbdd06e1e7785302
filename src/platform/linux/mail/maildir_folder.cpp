#include "platform/linux/mail/maildir_folder.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <tuple>

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostOfHeader = std::size_t{256} << 10U;
constexpr std::size_t kChunk = 8192;

// A mail's file is named "unique:2,FLAGS", or only "unique" while nobody has seen it.
struct MailFile {
  fs::path path;
  std::string id;
  std::string flags;

  explicit MailFile(const fs::path& file) : path(file), id(file.filename().native()) {
    const auto mark = id.rfind(":2,");
    if (mark == std::string::npos) return;
    flags = id.substr(mark + 3);
    id.resize(mark);
  }

  [[nodiscard]] bool Has(char flag) const { return flags.find(flag) != std::string::npos; }
};

[[noreturn]] void Raise(ErrorNumber number, const fs::path& path, const std::string& reason) {
  throw RuntimeError::WithDescription(
      number, FromUtf8Roughly("'" + path.native() + "' in the Maildir: " + reason));
}

std::vector<MailFile> FilesOf(const fs::path& folder) {
  std::vector<MailFile> files;
  for (const char* part : {"new", "cur"}) {
    std::error_code error;
    for (fs::directory_iterator entry(folder / part, error), end; !error && entry != end;
         entry.increment(error)) {
      std::error_code ignored;
      const bool isFile = entry->symlink_status(ignored).type() == fs::file_type::regular;
      if (isFile && !entry->path().filename().native().starts_with('.')) {
        files.emplace_back(entry->path());
      }
    }
    if (error) Raise(ErrorNumber::PathFileAccess, folder / part, error.message());
  }
  return files;
}

// File names begin with the time of delivery.
std::tuple<unsigned long long, const std::string&> Order(const MailFile& file) {
  return {std::strtoull(file.id.c_str(), nullptr, 10), file.id};
}

// At most that many bytes, or those up to the end of the header. Nothing when the file is gone.
std::optional<std::string> Bytes(const fs::path& path, std::size_t most, bool headerOnly) {
  std::error_code error;
  if (!fs::is_regular_file(fs::symlink_status(path, error))) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    if (!fs::exists(path, error)) return std::nullopt;
    Raise(ErrorNumber::PathFileAccess, path, "the mail cannot be read");
  }
  std::string bytes;
  while (file && bytes.size() < most) {
    const auto before = bytes.size();
    bytes.resize(std::min(before + (headerOnly ? kChunk : 16 * kChunk), most));
    file.read(bytes.data() + before, static_cast<std::streamsize>(bytes.size() - before));
    bytes.resize(before + static_cast<std::size_t>(file.gcount()));
    if (!headerOnly) continue;
    // The empty line may begin in the chunk before.
    const auto from = before < 2 ? 0 : before - 2;
    if (bytes.find("\n\n", from) != std::string::npos ||
        bytes.find("\n\r\n", from) != std::string::npos) {
      break;
    }
  }
  return bytes;
}

std::string WithFlag(std::string flags, char flag) {
  flags.erase(std::remove(flags.begin(), flags.end(), flag), flags.end());
  flags.push_back(flag);
  std::sort(flags.begin(), flags.end());
  return flags;
}

}  // namespace

bool IsMaildir(const fs::path& folder, std::error_code& error) {
  for (const char* part : {"cur", "new", "tmp"}) {
    const bool isFolder = fs::is_directory(folder / part, error);
    if (isFolder) static_cast<void>(fs::directory_iterator(folder / part, error));
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) {
      error.clear();
      return false;
    }
    if (!isFolder || error) return false;
  }
  return true;
}

std::optional<fs::path> MaildirFolder::Find(const fs::path& maildir, const std::string& name) {
  if (name.empty() || name.starts_with('.') || name.find('/') != std::string::npos) {
    return std::nullopt;
  }
  for (const auto& folder : {maildir / ("." + name), maildir / name}) {
    std::error_code ignored;
    if (IsMaildir(folder, ignored)) return folder;
  }
  return std::nullopt;
}

std::vector<ListedMail> MaildirFolder::List() {
  auto files = FilesOf(folder_);
  std::sort(files.begin(), files.end(),
            [](const auto& a, const auto& b) { return Order(a) < Order(b); });
  std::vector<ListedMail> mails;
  mails.reserve(files.size());
  for (const auto& file : files) {
    if (file.Has('T')) continue;
    const auto header = Bytes(file.path, kMostOfHeader, true);
    if (header) mails.push_back({file.id, file.Has('S'), file.Has('F'), ReadMailHeader(*header)});
  }
  return mails;
}

std::optional<std::string> MaildirFolder::Read(const std::string& id) {
  const auto path = Locate(id);
  return path.empty() ? std::nullopt : Bytes(path, kMostOfMail, false);
}

void MaildirFolder::Mark(const std::string& id, MailMark mark) {
  const auto path = Locate(id);
  if (path.empty()) return;
  const MailFile file(path);
  const char flag = mark == MailMark::Read ? 'S' : 'F';
  const auto marked = folder_ / "cur" / (id + ":2," + WithFlag(file.flags, flag));
  if (marked == path) return;
  // Renaming is one step: whatever happens the mail is there, under one name or the other. Another
  // mail of that name stays what it is.
  if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, marked.c_str(), RENAME_NOREPLACE) == 0) return;
  std::error_code error(errno, std::generic_category());
  if (error == std::errc::invalid_argument && !fs::exists(marked)) {
    fs::rename(path, marked, error);  // a file system that knows no such condition
  }
  if (!error || error == std::errc::no_such_file_or_directory) return;
  Raise(ErrorNumber::PathFileAccess, path, error.message());
}

// Other programs move and rename files at any time. Empty when the mail is gone.
fs::path MaildirFolder::Locate(const std::string& id) const {
  for (const auto& path :
       {folder_ / "new" / id, folder_ / "cur" / (id + ":2,"), folder_ / "cur" / (id + ":2,S")}) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(path, error))) return path;
  }
  const auto files = FilesOf(folder_);
  const auto found =
      std::find_if(files.begin(), files.end(), [&](const MailFile& file) { return file.id == id; });
  return found == files.end() ? fs::path() : found->path;
}

}  // namespace gorbex
