#include "platform/linux/mail/server_session.h"

#include <netdb.h>
#include <sys/socket.h>

#include <array>
#include <memory>
#include <string>
#include <vector>
#include <vmime/exception.hpp>
#include <vmime/net/timeoutHandler.hpp>
#include <vmime/platform.hpp>
#include <vmime/security/cert/certificateException.hpp>

#include "platform/linux/mail/certificate_verifier.h"
#include "platform/linux/mail/character_set.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

class TimeLimit : public vmime::net::timeoutHandler {
 public:
  explicit TimeLimit(Patience& patience) : patience_(patience) {}
  bool isTimeOut() override { return patience_.IsOver(); }
  void resetTimeOut() override {
    // A reset is no news where the time is up already.
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

// What a server answered, or what the network's side says.
std::string Words(const vmime::exception& error) {
  if (dynamic_cast<const vmime::exceptions::operation_timed_out*>(&error) != nullptr) return "";
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

std::string Situation(const vmime::exception& error, const MailServer& server) {
  if (dynamic_cast<const vmime::exceptions::operation_timed_out*>(&error) != nullptr) {
    return "does not answer in time";
  }
  if (dynamic_cast<const vmime::security::cert::certificateException*>(&error) != nullptr) {
    return "shows a certificate that is not to be trusted";
  }
  if (dynamic_cast<const vmime::exceptions::authentication_error*>(&error) != nullptr) {
    return "refuses the login of '" + server.user + "'";
  }
  if (dynamic_cast<const vmime::exceptions::connection_error*>(&error) != nullptr) {
    return "cannot be reached at port " + std::to_string(server.port);
  }
  const auto* refused = dynamic_cast<const vmime::exceptions::command_error*>(&error);
  if (refused != nullptr && refused->command() == "STARTTLS") return "offers no encryption";
  return refused != nullptr ? "refuses the request" : "cannot be used";
}

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

std::string Trimmed(const std::string& text) {
  constexpr const char* kBlanks = " \t\r\n";
  const auto start = text.find_first_not_of(kBlanks);
  return start == std::string::npos
             ? ""
             : text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

[[noreturn]] void Raise(const MailServer& server, const std::string& situation,
                        const std::string& words) {
  auto text = "The mail server '" + server.host + "' " + situation;
  const auto said = Trimmed(words);
  const bool tellsPassword =
      !server.password.empty() && said.find(server.password) != std::string::npos;
  if (!said.empty() && !tellsPassword) text += ": " + said;
  throw RuntimeError::WithDescription(ErrorNumber::AutomationError, FromHost(text));
}

}  // namespace

void StartMailLibrary() {
  static_cast<void>(vmime::platform::getHandler());
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
  for (std::size_t i = 0; i + 1 < addresses.size(); ++i) {
    try {
      connect(addresses[i]);
      return;
    } catch (const vmime::exceptions::connection_error&) {
      continue;
    }
  }
  connect(addresses.back());
}

void TalkTo(const MailServer& server, const std::function<void()>& talk) {
  try {
    talk();
  } catch (const RuntimeError&) {
    throw;
  } catch (const vmime::exception& error) {
    Raise(server, Situation(error, server), Words(error));
  } catch (const std::exception& error) {
    Raise(server, "cannot be used", error.what());
  }
}

}  // namespace gorbex
