#include "platform/linux/mail/server_session.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <vmime/exception.hpp>
#include <vmime/net/smtp/SMTPExceptions.hpp>
#include <vmime/net/timeoutHandler.hpp>
#include <vmime/platform.hpp>
#include <vmime/security/cert/certificateException.hpp>
#include <vmime/security/sasl/SASLMechanism.hpp>
#include <vmime/security/sasl/SASLMechanismFactory.hpp>
#include <vmime/security/sasl/XOAuth2SASLAuthenticator.hpp>
#include <vmime/security/sasl/XOAuth2SASLMechanism.hpp>
#include <vmime/security/sasl/defaultSASLAuthenticator.hpp>

#include "platform/code_page.h"
#include "platform/linux/mail/certificate_verifier.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr const char* kTokenMechanism = "XOAUTH2";

class TimeLimit : public vmime::net::timeoutHandler {
 public:
  explicit TimeLimit(Patience& patience) : patience_(patience) {}
  bool isTimeOut() override { return patience_.IsOver(); }
  void resetTimeOut() override {
    // A reset is not news when the time is already up.
    if (!patience_.IsOver()) patience_.Renew();
  }
  bool handleTimeOut() override { return false; }

 private:
  Patience& patience_;
};

class TimeLimitFactory : public vmime::net::timeoutHandlerFactory {
 public:
  explicit TimeLimitFactory(Patience& patience) : patience_(patience) {}
  vmime::shared_ptr<vmime::net::timeoutHandler> create() override {
    return vmime::make_shared<TimeLimit>(patience_);
  }

 private:
  Patience& patience_;
};

template <class Kind>
bool Is(const std::exception& error) {
  return dynamic_cast<const Kind*>(&error) != nullptr;
}

// The answer of a server, or the error of the network.
std::string Words(const vmime::exception& error) {
  if (Is<vmime::exceptions::operation_timed_out>(error) ||
      Is<vmime::net::smtp::SMTPMessageSizeExceedsMaxLimitsException>(error)) {
    return "";
  }
  if (const auto* refused = dynamic_cast<const vmime::exceptions::command_error*>(&error)) {
    return refused->response();
  }
  if (const auto* login = dynamic_cast<const vmime::exceptions::authentication_error*>(&error)) {
    return login->response();
  }
  if (const auto* greeting =
          dynamic_cast<const vmime::exceptions::connection_greeting_error*>(&error)) {
    return greeting->response();
  }
  std::string words = error.what();
  for (const auto* deeper = error.other(); deeper != nullptr; deeper = deeper->other()) {
    words += std::string(" ") + deeper->what();
  }
  return words;
}

/// A likely reason why a server does not answer, or answers in a way nobody understands: the usual
/// port of another scheme.
std::string Hint(const MailServer& server) {
  struct UsualPort {
    std::uint16_t port;
    const char* scheme;
    bool isSecure;
  };
  constexpr std::array<UsualPort, 5> kPorts{{{143, "imap", false},
                                             {993, "imaps", true},
                                             {25, "smtp", false},
                                             {587, "smtp", false},
                                             {465, "smtps", true}}};
  const bool isSecure = server.encryption == Encryption::FromTheStart;
  for (const auto& usual : kPorts) {
    if (usual.port != server.port || usual.isSecure == isSecure) continue;
    return " (port " + std::to_string(usual.port) + " is for " + usual.scheme + "://)";
  }
  return "";
}

bool IsRefusedConnection(const vmime::exception& error) {
  for (const auto* each = &error; each != nullptr; each = each->other()) {
    if (std::string_view(each->what()).find(std::strerror(ECONNREFUSED)) != std::string::npos) {
      return true;
    }
  }
  return false;
}

std::string Situation(const vmime::exception& error, const MailServer& server) {
  if (Is<vmime::exceptions::operation_timed_out>(error)) {
    return "does not answer in time" + Hint(server);
  }
  if (Is<vmime::net::smtp::SMTPMessageSizeExceedsMaxLimitsException>(error)) {
    return "does not accept a mail this large";
  }
  if (Is<vmime::security::cert::certificateException>(error)) {
    return "shows a certificate that is not to be trusted";
  }
  if (Is<vmime::exceptions::authentication_error>(error)) {
    return "refuses the login of '" + server.user + "'";
  }
  if (Is<vmime::exceptions::connection_error>(error)) {
    const std::string place = "at port " + std::to_string(server.port);
    return (IsRefusedConnection(error) ? "refuses connections " : "cannot be reached ") + place;
  }
  const auto* refused = dynamic_cast<const vmime::exceptions::command_error*>(&error);
  if (refused != nullptr && refused->command() == "STARTTLS") return "offers no encryption";
  return refused != nullptr ? "refuses the request" : "cannot be used" + Hint(server);
}

class PasswordLogin : public vmime::security::sasl::defaultSASLAuthenticator {
 public:
  using Mechanisms = std::vector<vmime::shared_ptr<vmime::security::sasl::SASLMechanism>>;

  // A way to log in that needs a token would end the login instead of letting the next way try.
  const Mechanisms getAcceptableMechanisms(
      const Mechanisms& available,
      vmime::shared_ptr<vmime::security::sasl::SASLMechanism> suggested) const override {
    Mechanisms usable;
    std::copy_if(available.begin(), available.end(), std::back_inserter(usable),
                 [](const auto& each) { return each->getName() != kTokenMechanism; });
    return defaultSASLAuthenticator::getAcceptableMechanisms(usable, suggested);
  }
};

class TokenLogin : public vmime::security::sasl::XOAuth2SASLAuthenticator {
 public:
  explicit TokenLogin(std::string token)
      : XOAuth2SASLAuthenticator(MODE_EXCLUSIVE), token_(std::move(token)) {}
  const vmime::string getAccessToken() const override { return token_; }

 private:
  std::string token_;
};

/// The numbers of a host, at least one.
std::vector<std::string> AddressesOf(const std::string& host) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int error = getaddrinfo(host.c_str(), nullptr, &wanted, &found);
  if (error != 0) throw vmime::exceptions::connection_error(gai_strerror(error));
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> guard(found, freeaddrinfo);
  std::vector<std::string> addresses;
  for (const auto* each = found; each != nullptr; each = each->ai_next) {
    std::array<char, NI_MAXHOST> text{};
    if (getnameinfo(each->ai_addr, each->ai_addrlen, text.data(), text.size(), nullptr, 0,
                    NI_NUMERICHOST) == 0) {
      addresses.emplace_back(text.data());
    }
  }
  if (addresses.empty()) throw vmime::exceptions::connection_error("The host has no address");
  return addresses;
}

/// Whether nobody listens at a place. The library tells a closed port and a silent one alike.
bool RefusesConnections(const std::string& address, std::uint16_t port) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  wanted.ai_flags = AI_NUMERICHOST;
  addrinfo* found = nullptr;
  if (getaddrinfo(address.c_str(), std::to_string(port).c_str(), &wanted, &found) != 0)
    return false;
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> guard(found, freeaddrinfo);
  const int place = socket(found->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (place < 0) return false;
  int error = ::connect(place, found->ai_addr, found->ai_addrlen) == 0 ? 0 : errno;
  pollfd awaited{place, POLLOUT, 0};
  constexpr int kPatience = 1000;  // milliseconds
  if (error == EINPROGRESS && poll(&awaited, 1, kPatience) == 1) {
    socklen_t size = sizeof(error);
    getsockopt(place, SOL_SOCKET, SO_ERROR, &error, &size);
  }
  close(place);
  return error == ECONNREFUSED;
}

/// The one who refuses a command is there; whatever else goes wrong, the server is away.
bool RefusesCommand(const std::exception& error) {
  const auto* refused = dynamic_cast<const vmime::exceptions::command_error*>(&error);
  if (refused == nullptr || refused->command() == "STARTTLS") return false;
  const auto said = refused->response();
  return said.find("[UNAVAILABLE]") == std::string::npos &&
         said.find("[INUSE]") == std::string::npos;
}

[[noreturn]] void Raise(const MailServer& server, const std::exception& error,
                        const std::string& situation, const std::string& words) {
  auto text = "The mail server '" + server.host + "' " + situation;
  const auto said = Trimmed(words);
  const bool tellsPassword =
      !server.password.empty() && said.find(server.password) != std::string::npos;
  if (!said.empty() && !tellsPassword) text.append(": ").append(said);
  if (Is<vmime::exceptions::authentication_error>(error)) {
    throw LoginRefused(FromUtf8Roughly(text));
  }
  if (!RefusesCommand(error)) throw MailboxAway(FromUtf8Roughly(text));
  throw RuntimeError::WithDescription(ErrorNumber::AutomationError, FromUtf8Roughly(text));
}

}  // namespace

void StartMailLibrary() {
  static_cast<void>(vmime::platform::getHandler());
  // The library has this way to log in, but does not know it by its name.
  vmime::security::sasl::SASLMechanismFactory::getInstance()
      ->registerMechanism<vmime::security::sasl::XOAuth2SASLMechanism>(kTokenMechanism);
}

vmime::shared_ptr<vmime::security::authenticator> LoginAt(const MailServer& server) {
  if (server.wantsToken) return vmime::make_shared<TokenLogin>(server.password);
  return vmime::make_shared<PasswordLogin>();
}

void Prepare(vmime::net::service& service, const MailServer& server, const std::string& address,
             Patience& patience) {
  service.setProperty("server.address", address);
  service.setProperty("server.port", server.port);
  service.setProperty("auth.username", server.user);
  service.setProperty("auth.password", server.password);
  service.setProperty("options.need-authentication", !server.user.empty());
  service.setProperty("connection.tls", server.encryption != Encryption::None);
  service.setProperty("connection.tls.required", server.encryption == Encryption::Required);
  service.setCertificateVerifier(vmime::make_shared<CertificateVerifier>(server.host));
  service.setTimeoutHandlerFactory(vmime::make_shared<TimeLimitFactory>(patience));
}

void AtFirstAddress(const MailServer& server,
                    const std::function<void(const std::string& address)>& connect) {
  const auto addresses = AddressesOf(server.host);
  for (const auto& address : addresses) {
    try {
      connect(address);
      return;
    } catch (const vmime::exceptions::connection_error&) {
      if (&address != &addresses.back()) continue;
      if (!RefusesConnections(address, server.port)) throw;
      throw vmime::exceptions::connection_error(std::strerror(ECONNREFUSED));
    }
  }
}

void TalkTo(const MailServer& server, const std::function<void()>& talk) {
  try {
    talk();
  } catch (const RuntimeError&) {
    throw;
  } catch (const vmime::exception& error) {
    Raise(server, error, Situation(error, server), Words(error));
  } catch (const std::exception& error) {
    Raise(server, error, "cannot be used", error.what());
  }
}

}  // namespace gorbex
