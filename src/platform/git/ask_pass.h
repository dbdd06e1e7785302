#pragma once

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace gorbex {

// How a password reaches git: git starts the program that GIT_ASKPASS names, with its question as
// the one argument, and reads the answer from its output. That program is this one, called again;
// its answers are in the environment that git hands down, never in an argument or a file.

/// The input of the login, in UTF-8.
struct GitLogin {
  std::string user{};
  std::string password{};

  [[nodiscard]] bool IsEmpty() const { return user.empty() && password.empty(); }
};

/// "scheme://host:port" in lower case, as a URL or one of git's questions names it; empty when it
/// names none.
[[nodiscard]] std::string OriginInUrl(const std::string& text);

/// True when an http URL contains credentials that git would take instead of the login.
[[nodiscard]] bool OverridesLogin(const std::string& url, const GitLogin& login);

/// The variables that let the program answer for the login, at those origins and no other.
[[nodiscard]] std::map<std::string, std::optional<std::string>> AskPassEnvironment(
    const std::string& program, const GitLogin& login, const std::vector<std::string>& origins);

/// Answers git's question, the one argument, and gives the exit status; nothing when this is an
/// ordinary start. To be called before anything else looks at the arguments.
[[nodiscard]] std::optional<int> AnswerAskPass(
    const std::vector<std::string>& arguments,
    const std::function<std::optional<std::string>(const char*)>& environment, std::ostream& out);

}  // namespace gorbex
