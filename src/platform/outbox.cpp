#include "platform/outbox.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string_view>
#include <system_error>

#include "platform/plain_text.h"

namespace gorbex {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::microseconds;

// The lines before the message. They are header fields, so that the file is a mail for any reader.
constexpr std::string_view kFrom = "X-Outbox-From: ";
constexpr std::string_view kTo = "X-Outbox-To: ";
constexpr std::string_view kLength = "X-Outbox-Length: ";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kWaiting = ".mail";
constexpr std::string_view kFailed = ".eml";
constexpr auto kShortestPause = 1min;
constexpr auto kLongestPause = 1h;

// The time at which a mail that nobody has tried to send was last tried.
constexpr Outbox::Time kNever{};

std::string Written(const WaitingMail& mail) {
  std::string bytes;
  bytes.append(kFrom).append(mail.from).append(kLineEnd);
  for (const auto& to : mail.to) bytes.append(kTo).append(to).append(kLineEnd);
  bytes.append(kLength).append(std::to_string(mail.text.size())).append(kLineEnd);
  return bytes.append(mail.text).append(mail.smallerText);
}

/// Takes the value of a line that begins with a name off the front of a text. False when the text
/// begins otherwise.
bool TakeValue(std::string_view& text, std::string_view name, std::string& value) {
  const auto end = text.find(kLineEnd);
  if (!text.starts_with(name) || end == std::string_view::npos) return false;
  value = text.substr(name.size(), end - name.size());
  text.remove_prefix(end + kLineEnd.size());
  return true;
}

std::optional<WaitingMail> Parsed(std::string_view bytes) {
  WaitingMail mail;
  std::string to, length;
  const bool hasSender = TakeValue(bytes, kFrom, mail.from);
  while (TakeValue(bytes, kTo, to)) mail.to.push_back(to);
  if (!hasSender || mail.to.empty() || !TakeValue(bytes, kLength, length)) return std::nullopt;
  const auto size = WholeNumber<std::size_t>(length);
  if (!size || *size > bytes.size()) return std::nullopt;
  mail.text = bytes.substr(0, *size);
  mail.smallerText = bytes.substr(*size);
  return mail;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Padded(const std::string& number) {
  constexpr std::size_t kDigits = 20;
  return std::string(kDigits - std::min(kDigits, number.size()), '0') + number;
}

// Mails are sorted by their names. The random part keeps those of two programs apart.
std::string NewName(Outbox::Time now) {
  const auto time = std::chrono::duration_cast<microseconds>(now.time_since_epoch()).count();
  return Padded(std::to_string(time)) + "-" + std::to_string(std::random_device()()) +
         std::string(kWaiting);
}

Outbox::Time TimeOf(const std::string& name) {
  std::int64_t time = 0;
  std::from_chars(name.data(), name.data() + name.size(), time);
  return Outbox::Time(std::chrono::duration_cast<Outbox::Time::duration>(microseconds(time)));
}

void MakePrivateFolder(const fs::path& folder) {
  fs::create_directories(folder);
  fs::permissions(folder, fs::perms::owner_all);
}

}  // namespace

/// A file with a waiting mail.
struct Outbox::Entry {
  fs::path path;
  Time since;  ///< when it was put in
  Time tried;
  std::uintmax_t size = 0;
};

void Outbox::Put(const WaitingMail& mail) {
  MakePrivateFolder(uses_.folder);
  const auto file = uses_.folder / NewName(uses_.now());
  uses_.write(file, Written(mail));
  // Without this time the mail only waits a minute longer.
  std::error_code ignored;
  fs::last_write_time(file, fs::file_time_type::clock::from_sys(kNever), ignored);
}

// Another program may take a file away at any time.
std::vector<Outbox::Entry> Outbox::Waiting() const {
  std::vector<Entry> entries;
  std::error_code error;
  if (!fs::exists(uses_.folder, error)) return entries;
  for (const auto& file : fs::directory_iterator(uses_.folder)) {
    const auto name = file.path().filename().string();
    if (!name.ends_with(kWaiting) || name.starts_with('.')) continue;
    const auto tried = fs::last_write_time(file.path(), error);
    const auto size = error ? 0 : fs::file_size(file.path(), error);
    if (error) continue;
    using std::chrono::time_point_cast;
    entries.push_back({file.path(), TimeOf(name),
                       time_point_cast<Time::duration>(fs::file_time_type::clock::to_sys(tried)),
                       size});
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& a, const Entry& b) { return a.path < b.path; });
  return entries;
}

bool Outbox::IsFull() const {
  const auto entries = Waiting();
  std::uintmax_t bytes = 0;
  for (const auto& entry : entries) bytes += entry.size;
  return entries.size() >= kMostMails || bytes >= kMostBytes;
}

bool Outbox::IsDue(const Entry& entry) const {
  // A clock that was set back must not put a mail off.
  if (entry.tried == kNever || entry.tried > uses_.now()) return true;
  const auto pause =
      std::clamp<Time::duration>(entry.tried - entry.since, kShortestPause, kLongestPause);
  return uses_.now() - entry.tried >= pause;
}

std::vector<std::string> Outbox::Deliver(const Send& send) {
  News news;
  if (Waiting().empty()) return news;
  const auto turn = uses_.takeTurn(uses_.folder / "turn.lock");
  if (turn == nullptr) return news;
  const auto entries = Waiting();
  const auto isDue = [this](const Entry& entry) { return IsDue(entry); };
  // A server that is back has time for all. The first one finds out.
  const bool areAllDue = isServerAway_ && std::any_of(entries.begin(), entries.end(), isDue);
  for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
    if (!areAllDue && !isDue(*entry)) continue;
    const auto delivery = DeliverOne(*entry, send, news);
    isServerAway_ = delivery.outcome == Delivery::Outcome::ServerAway;
    if (!isServerAway_) continue;
    while (++entry != entries.end()) PutOff(*entry, delivery.words, news);
    break;
  }
  return news;
}

Delivery Outbox::DeliverOne(const Entry& entry, const Send& send, News& news) {
  using Outcome = Delivery::Outcome;
  const auto mail = Parsed(ReadFile(entry.path));
  if (!mail) {
    SetAside(entry);
    news.push_back("The file '" + entry.path.filename().string() + "' in the outbox is not a mail");
    return {Outcome::Refused};
  }
  const std::string reply = "The reply to " + Joined(mail->to);
  auto delivery = send(*mail, mail->text);
  if (delivery.outcome == Outcome::TooLarge && !mail->smallerText.empty()) {
    news.push_back(reply + " goes without its attachment. " + delivery.words);
    delivery = send(*mail, mail->smallerText);
  }
  const bool canWait =
      delivery.outcome == Outcome::ServerAway || delivery.outcome == Outcome::NotNow;
  if (delivery.outcome == Outcome::Taken) {
    fs::remove(entry.path);
    if (entry.tried != kNever) news.push_back(reply + " is sent");
  } else if (!canWait || uses_.now() - entry.since > kLongestWait) {
    SetAside(entry);
    news.push_back(reply + (canWait ? " could not be sent for five days" : " was refused") +
                   " and is in Outbox\\failed. " + delivery.words);
  } else {
    PutOff(entry, delivery.words, news);
  }
  return delivery;
}

// Told once of each mail.
void Outbox::PutOff(const Entry& entry, const std::string& words, News& news) const {
  const auto mail = entry.tried == kNever ? Parsed(ReadFile(entry.path)) : std::nullopt;
  if (mail) news.push_back("The reply to " + Joined(mail->to) + " waits in the outbox. " + words);
  SetTried(entry);
}

void Outbox::SetTried(const Entry& entry) const {
  std::error_code ignored;
  fs::last_write_time(entry.path, fs::file_time_type::clock::from_sys(uses_.now()), ignored);
}

// The oldest make room.
void Outbox::SetAside(const Entry& entry) const {
  const auto folder = uses_.folder / "failed";
  MakePrivateFolder(folder);
  SetTried(entry);
  fs::rename(entry.path, folder / (entry.path.stem().string() + std::string(kFailed)));
  std::vector<fs::directory_entry> failed(fs::directory_iterator(folder), {});
  std::sort(failed.begin(), failed.end(), std::greater<>());
  std::uintmax_t bytes = 0;
  for (std::size_t i = 0; i < failed.size(); ++i) {
    std::error_code ignored;
    bytes += failed[i].file_size(ignored);
    if (i >= kMostFailedMails || bytes > kMostBytes) fs::remove(failed[i].path(), ignored);
  }
}

}  // namespace gorbex
