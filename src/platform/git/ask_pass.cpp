#include "platform/git/ask_pass.h"

#include <algorithm>
#include <string_view>

namespace gorbex {
namespace {

constexpr const char* kHosts = "GORBEX_ASKPASS_HOSTS";
constexpr const char* kUser = "GORBEX_ASKPASS_USER";
constexpr const char* kPassword = "GORBEX_ASKPASS_PASSWORD";

bool Contains(std::string_view hosts, const std::string& host) {
  return !host.empty() &&
         (" " + std::string(hosts) + " ").find(" " + host + " ") != std::string::npos;
}

// A URL in a text, quoted or not, from its "://" to its end.
std::string_view BehindScheme(std::string_view text) {
  const auto start = text.find("://");
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start + 3);
  return text.substr(0, text.find_first_of("'\" \t\r\n"));
}

// In "http://one/@two" the host is "one" to some readers and "two" to others.
bool IsAmbiguous(const std::string& question) {
  const auto rest = BehindScheme(question);
  const auto path = rest.find_first_of("/?#\\");
  return path != std::string_view::npos && rest.find('@', path) != std::string_view::npos;
}

}  // namespace

std::string HostInUrl(const std::string& text) {
  auto authority = BehindScheme(text);
  authority = authority.substr(0, authority.find_first_of("/?#\\"));
  return std::string(authority.substr(authority.rfind('@') + 1));
}

std::map<std::string, std::optional<std::string>> AskPassEnvironment(
    const std::string& program, const GitLogin& login, const std::vector<std::string>& hosts) {
  std::string all;
  for (const auto& host : hosts) all += (all.empty() ? "" : " ") + host;
  return {
      {"GIT_ASKPASS", program}, {kHosts, all}, {kUser, login.user}, {kPassword, login.password}};
}

std::optional<int> AnswerAskPass(
    int count, const char* const* values,
    const std::function<std::optional<std::string>(const char*)>& environment, std::ostream& out) {
  const auto hosts = environment(kHosts);
  if (!hosts || count != 2) return std::nullopt;
  const std::string question(values[1]);
  const bool asksUser = question.starts_with("Username for ");
  if (!asksUser && !question.starts_with("Password for ")) return std::nullopt;
  const auto answer = environment(asksUser ? kUser : kPassword);
  // A repository may name other hosts, which the password is not meant for.
  const bool isMeant = !IsAmbiguous(question) && Contains(*hosts, HostInUrl(question));
  if (!isMeant || (asksUser && !answer)) return 1;
  out << answer.value_or("") << std::endl;
  return 0;
}

}  // namespace gorbex
