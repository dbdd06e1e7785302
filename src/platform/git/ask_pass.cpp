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

}  // namespace

std::string HostInUrl(const std::string& text) {
  const auto start = text.find("://");
  if (start == std::string::npos) return {};
  auto authority = text.substr(start + 3);
  authority.resize(std::min(authority.find_first_of("/?#' "), authority.size()));
  return authority.substr(authority.rfind('@') + 1);
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
  if (!Contains(*hosts, HostInUrl(question)) || (asksUser && !answer)) return 1;
  out << answer.value_or("") << std::endl;
  return 0;
}

}  // namespace gorbex
