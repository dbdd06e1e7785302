#include "platform/linux/mail/account.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/code_page.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

struct Url {
  std::string scheme, user, host, port, path, query;
  std::optional<std::string> password;
};

[[noreturn]] void Refuse(const std::string& what, const std::string& why) {
  throw RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                      "The URL of the mail " + what + " " + why);
}

std::string Decoded(std::string_view text, const std::string& what) {
  auto decoded = PercentDecoded(text);
  if (!decoded) Refuse(what, "has a '%' without two hexadecimal digits");
  const bool hasControl = std::any_of(decoded->begin(), decoded->end(), [](char letter) {
    return static_cast<unsigned char>(letter) < 0x20;
  });
  if (hasControl) Refuse(what, "holds a control character");
  return *std::move(decoded);
}

/// Cuts text in two at a separator; without one everything is before it.
struct Halves {
  Halves(std::string_view text, std::size_t at)
      : before(text.substr(0, at)),
        after(at < text.size() ? text.substr(at + 1) : std::string_view()),
        isCut(at < text.size()) {}
  std::string_view before, after;
  bool isCut;
};

void ReadAuthority(std::string_view authority, const std::string& what, Url& url) {
  const auto at = authority.rfind('@');
  if (at != std::string_view::npos) {
    const auto login = authority.substr(0, at);
    const Halves halves(login, login.find(':'));
    url.user = Decoded(halves.before, what);
    if (halves.isCut) url.password = Decoded(halves.after, what);
    authority.remove_prefix(at + 1);
  }
  // An address of the newer protocol contains colons, in brackets.
  const auto bracket = authority.starts_with('[') ? authority.find(']') : std::string_view::npos;
  const auto colon = authority.find(':', bracket == std::string_view::npos ? 0 : bracket);
  const Halves place(authority, colon);
  url.host = Decoded(place.before, what);
  url.port = place.after;
  if (bracket != std::string_view::npos) url.host = url.host.substr(1, url.host.size() - 2);
}

Url Read(const std::string& codePageText, const std::string& what) {
  const auto text = ToUtf8(codePageText);
  const auto colon = text.find("://");
  if (colon == std::string::npos) Refuse(what, "does not begin with a scheme such as 'imap://'");
  Url url;
  url.scheme = LowerCase(std::string_view(text).substr(0, colon));
  const auto rest = std::string_view(text).substr(colon + 3);
  const Halves place(rest, rest.find('?'));
  url.query = place.after;
  const auto slash = place.before.find('/');
  ReadAuthority(place.before.substr(0, slash), what, url);
  if (slash != std::string_view::npos) url.path = Decoded(place.before.substr(slash), what);
  return url;
}

std::uint16_t PortOf(const Url& url, std::uint16_t usual, const std::string& what) {
  if (url.port.empty()) return usual;
  const auto port = WholeNumber<std::uint16_t>(url.port);
  if (!port || *port == 0) Refuse(what, "has no valid port");
  return *port;
}

bool IsThisMachine(const std::string& host) {
  return host == "localhost" || host == "::1" ||
         (host.starts_with("127.") && host.find_first_not_of("0123456789.") == std::string::npos);
}

MailServer ServerOf(const Url& url, std::uint16_t usualPort, const MailDefaults& defaults,
                    const std::string& what) {
  if (url.host.empty()) Refuse(what, "names no host");
  if (url.path.size() > 1) Refuse(what, "has a path where only a host can be");
  MailServer server{url.host, PortOf(url, usualPort, what), url.user};
  if (!url.user.empty()) server.password = url.password.value_or(defaults.password);
  const bool isSecure = url.scheme.ends_with('s');
  if (isSecure) {
    server.encryption = Encryption::FromTheStart;
  } else if (!url.user.empty() && !IsThisMachine(url.host)) {
    server.encryption = Encryption::Required;
  }
  for (std::string_view rest = url.query; !rest.empty();) {
    const Halves options(rest, rest.find('&'));
    if (options.before == "tls=none" && !isSecure) {
      server.encryption = Encryption::None;
    } else if (options.before == "auth=xoauth2" && !url.user.empty()) {
      server.wantsToken = true;
    } else {
      Refuse(what, "has an option other than 'tls=none' or 'auth=xoauth2'");
    }
    rest = options.after;
  }
  return server;
}

std::string PathOf(const Url& url, const std::string& what) {
  if (!url.host.empty() || url.path.size() < 2) {
    Refuse(what, "needs a whole path after '" + url.scheme + "://'");
  }
  return url.path;
}

}  // namespace

MailStore StoreOf(const MailAccount& account, const MailDefaults& defaults) {
  const std::string what = "store";
  if (account.store.empty()) return MaildirStore{defaults.homeFolder + "/Maildir", true};
  const auto url = Read(account.store, what);
  if (url.scheme == "maildir") return MaildirStore{PathOf(url, what)};
  if (url.scheme != "imap" && url.scheme != "imaps") {
    Refuse(what, "must begin with maildir://, imap:// or imaps://");
  }
  if (url.user.empty()) Refuse(what, "names no user: imap://user@host");
  return ServerOf(url, url.scheme == "imaps" ? 993 : 143, defaults, what);
}

MailTransport TransportOf(const MailAccount& account, const MailDefaults& defaults) {
  const std::string what = "transport";
  if (account.transport.empty()) return SendmailProgram{"/usr/sbin/sendmail"};
  const auto url = Read(account.transport, what);
  if (url.scheme == "sendmail") return SendmailProgram{PathOf(url, what)};
  if (url.scheme != "smtp" && url.scheme != "smtps") {
    Refuse(what, "must begin with sendmail://, smtp:// or smtps://");
  }
  return ServerOf(url, url.scheme == "smtps" ? 465 : 25, defaults, what);
}

}  // namespace gorbex
