#include "platform/git/ask_pass.h"

#include <algorithm>
#include <string_view>

#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr const char* kOrigins = "GORBEX_ASKPASS_ORIGINS";
constexpr const char* kUser = "GORBEX_ASKPASS_USER";
constexpr const char* kPassword = "GORBEX_ASKPASS_PASSWORD";

bool Contains(std::string_view origins, const std::string& origin) {
  return (" " + std::string(origins) + " ").find(" " + origin + " ") != std::string::npos;
}

// A server may lead from http to https, where a password is safer; never the other way round.
bool IsMeant(std::string_view origins, const std::string& origin) {
  constexpr std::string_view kSafe = "https://";
  if (origin.empty()) return false;
  return Contains(origins, origin) ||
         (origin.starts_with(kSafe) && Contains(origins, "http://" + origin.substr(kSafe.size())));
}

// A URL in a text, quoted or not, from its "://" to its end.
std::string_view BehindScheme(std::string_view text) {
  const auto start = text.find("://");
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start + 3);
  return text.substr(0, text.find_first_of("'\" \t\r\n"));
}

std::string_view AuthorityIn(std::string_view text) {
  const auto rest = BehindScheme(text);
  return rest.substr(0, rest.find_first_of("/?#\\"));
}

std::string_view SchemeIn(std::string_view text) {
  text = text.substr(0, text.find("://"));
  return text.substr(text.find_last_of("'\" \t\r\n") + 1);
}

char LowerCaseLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// In "http://one/@two" the host is "one" to some readers and "two" to others.
bool IsAmbiguous(const std::string& question) {
  const auto rest = BehindScheme(question);
  const auto path = rest.find_first_of("/?#\\");
  return path != std::string_view::npos && rest.find('@', path) != std::string_view::npos;
}

}  // namespace

std::string OriginInUrl(const std::string& text) {
  const auto authority = AuthorityIn(text);
  const auto host = authority.substr(authority.rfind('@') + 1);
  if (host.empty()) return {};
  std::string origin(SchemeIn(text));
  origin.append("://").append(host);
  std::transform(origin.begin(), origin.end(), origin.begin(), LowerCaseLetter);
  return origin;
}

bool OverridesLogin(const std::string& url, const GitLogin& login) {
  const auto authority = AuthorityIn(url);
  const auto end = authority.rfind('@');
  if (login.IsEmpty() || end == std::string_view::npos) return false;
  if (!OriginInUrl(url).starts_with("http")) return false;
  const auto own = authority.substr(0, end);
  if (own.find(':') != std::string_view::npos) return true;
  return !login.user.empty() && PercentDecoded(own) != login.user;
}

std::map<std::string, std::optional<std::string>> AskPassEnvironment(
    const std::string& program, const GitLogin& login, const std::vector<std::string>& origins) {
  return {{"GIT_ASKPASS", program},
          {kOrigins, Joined(origins, " ")},
          {kUser, login.user},
          {kPassword, login.password}};
}

std::optional<int> AnswerAskPass(
    const std::vector<std::string>& arguments,
    const std::function<std::optional<std::string>(const char*)>& environment, std::ostream& out) {
  const auto origins = environment(kOrigins);
  if (!origins || arguments.size() != 1) return std::nullopt;
  const std::string& question = arguments.front();
  const bool asksUser = question.starts_with("Username for ");
  if (!asksUser && !question.starts_with("Password for ")) return std::nullopt;
  const auto answer = environment(asksUser ? kUser : kPassword);
  // A repository may name other hosts, which the password is not meant for.
  const bool isMeant = !IsAmbiguous(question) && IsMeant(*origins, OriginInUrl(question));
  if (!isMeant || (asksUser && !answer)) return 1;
  out << answer.value_or("") << std::endl;
  return 0;
}

}  // namespace gorbex
