#include "platform/linux/mail/mailbox_turn.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <variant>

namespace gorbex {
namespace {

namespace fs = std::filesystem;

// A server's mailbox has no place on this machine except a file that represents it.
fs::path FileFor(const MailServer& server, const std::string& homeFolder) {
  const auto folder = fs::path(homeFolder) / ".local/share/gorbexbuilder";
  std::error_code ignored;
  fs::create_directories(folder, ignored);
  auto name = server.user + "@" + server.host + "-" + std::to_string(server.port) + ".mail.lock";
  const auto isPlain = [](unsigned char letter) {
    return std::isalnum(letter) != 0 || letter == '.' || letter == '@' || letter == '-';
  };
  std::replace_if(
      name.begin(), name.end(),
      [&](char letter) { return !isPlain(static_cast<unsigned char>(letter)); }, '_');
  return folder / name;
}

int Opened(const MailStore& store, const std::string& homeFolder) {
  if (const auto* maildir = std::get_if<MaildirStore>(&store)) {
    return open(maildir->folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  }
  const auto file = FileFor(std::get<MailServer>(store), homeFolder);
  return open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
}

}  // namespace

std::shared_ptr<void> TakeMailboxTurn(const MailStore& store, const std::string& homeFolder) {
  const int place = Opened(store, homeFolder);
  const bool isTaken = place >= 0 && flock(place, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  const std::shared_ptr<int> turn(new int(place), [](const int* held) {
    if (*held >= 0) close(*held);
    delete held;
  });
  return isTaken ? nullptr : turn;
}

}  // namespace gorbex
