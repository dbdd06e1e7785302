#include "platform/linux/mail/imap_folder.h"

#include <algorithm>
#include <vmime/exception.hpp>
#include <vmime/net/folder.hpp>
#include <vmime/net/imap/IMAPCommand.hpp>
#include <vmime/net/imap/IMAPConnection.hpp>
#include <vmime/net/imap/IMAPParser.hpp>
#include <vmime/net/imap/IMAPStore.hpp>
#include <vmime/net/imap/IMAPUtils.hpp>
#include <vmime/net/tracer.hpp>

#include "platform/code_page.h"
#include "platform/linux/mail/server_session.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using vmime::net::imap::IMAPCommand;
using vmime::net::imap::IMAPConnection;
using vmime::net::imap::IMAPParser;
using Item = IMAPParser::msg_att_item;
using Response = std::unique_ptr<IMAPParser::response>;

/// A server's facts about one mail.
struct Fetched {
  std::string uid;
  bool isRead = false;
  bool isFlagged = false;
  bool isDeleted = false;
  std::optional<std::string> bytes;
};

/// Ends a conversation in which the server asks for more than there is: the library, which
/// asks a server for its ways to log in, would read such an answer as a whole one and crash.
class Listener : public vmime::net::tracer {
 public:
  void traceSend(const vmime::string& line) override {
    mayBeAsked_ = line.find(" AUTHENTICATE ") != std::string::npos;
  }
  void traceReceive(const vmime::string& line) override {
    if (mayBeAsked_ || !line.starts_with('+')) return;
    throw vmime::exceptions::socket_exception("the server does not keep to the protocol");
  }

 private:
  bool mayBeAsked_ = false;
};

class ListenerFactory : public vmime::net::tracerFactory {
 public:
  vmime::shared_ptr<vmime::net::tracer> create(vmime::shared_ptr<vmime::net::service> /*service*/,
                                               const int /*connection*/) override {
    return vmime::make_shared<Listener>();
  }
};

// The commands of the library's folder class fetch header fields in a way that marks mails as read
// and give one damaged mail the power to fail a whole listing; the connection's own do not.
class Connection {
 public:
  Connection(const MailServer& server, Patience& patience) {
    AtFirstAddress(server, [&](const std::string& address) { Connect(server, address, patience); });
  }

  /// Opens the folder below the inbox, or the one beside it. False when there is neither.
  bool Select(const std::string& name) {
    for (const auto& parent :
         {vmime::net::folder::path(vmime::net::folder::path::component("INBOX")),
          vmime::net::folder::path()}) {
      const auto path = parent / vmime::word(name, vmime::charset(vmime::charsets::UTF_8));
      const auto mailbox =
          vmime::net::imap::IMAPUtils::pathToString(connection_->hierarchySeparator(), path);
      if (Exists(mailbox)) {
        ReadSelected(*Ask(IMAPCommand::SELECT(false, mailbox, {}), "SELECT"));
        return true;
      }
    }
    return false;
  }

  /// Names the folder's state: mails keep their numbers as long as it stays.
  [[nodiscard]] std::uint64_t Validity() const { return validity_; }
  [[nodiscard]] std::size_t Count() const { return count_; }

  std::vector<Fetched> Fetch(const std::string& what) {
    const auto response = Ask(IMAPCommand::createCommand(what), "FETCH");
    std::vector<Fetched> all;
    for (const auto* data : response->continue_req_or_response_data()) {
      const auto* mail = data->response_data() ? data->response_data()->message_data() : nullptr;
      if (mail == nullptr || mail->type() != IMAPParser::message_data::FETCH) continue;
      all.emplace_back();
      for (const auto* item : mail->msg_att()->items()) Take(*item, all.back());
    }
    return all;
  }

  void Do(const std::string& what) {
    Ask(IMAPCommand::createCommand(what), what.substr(0, what.find(' ')));
  }

 private:
  void Connect(const MailServer& server, const std::string& address, Patience& patience) {
    session_ = vmime::net::session::create();
    const bool isSecure = server.encryption == Encryption::FromTheStart;
    store_ = vmime::dynamicCast<vmime::net::imap::IMAPStore>(session_->getStore(
        vmime::utility::url(isSecure ? "imaps" : "imap", server.host), LoginAt(server)));
    Prepare(*store_, server, address, patience);
    store_->setTracerFactory(vmime::make_shared<ListenerFactory>());
    // A password needs no list of the ways to log in; a token has no other way.
    store_->setProperty("options.sasl", server.wantsToken);
    store_->setProperty("options.sasl.fallback", false);
    store_->getAuthenticator()->setService(store_);
    connection_ = vmime::make_shared<IMAPConnection>(store_, store_->getAuthenticator());
    connection_->connect();
  }

  Response Ask(const vmime::shared_ptr<IMAPCommand>& command, const std::string& name) {
    connection_->sendCommand(command);
    Response response(connection_->readResponse());
    const auto* done = response->isBad() ? nullptr : response->response_done()->response_tagged();
    if (done == nullptr && !response->isBad()) {
      throw vmime::exceptions::socket_exception("the server ended the conversation");
    }
    if (done == nullptr || done->resp_cond_state()->status() != IMAPParser::resp_cond_state::OK) {
      throw vmime::exceptions::command_error(name, response->getErrorLog());
    }
    return response;
  }

  bool Exists(const std::string& mailbox) {
    const auto response = Ask(IMAPCommand::LIST("", mailbox), "LIST");
    const auto& answers = response->continue_req_or_response_data();
    return std::any_of(answers.begin(), answers.end(), [](const auto* data) {
      const auto* list = data->response_data() ? data->response_data()->mailbox_data() : nullptr;
      if (list == nullptr || list->type() != IMAPParser::mailbox_data::LIST) return false;
      const auto& flags = list->mailbox_list()->mailbox_flag_list()->flags();
      return std::none_of(flags.begin(), flags.end(), [](const auto* flag) {
        return flag->type() == IMAPParser::mailbox_flag::NOSELECT;
      });
    });
  }

  void ReadSelected(const IMAPParser::response& response) {
    for (const auto* data : response.continue_req_or_response_data()) {
      const auto* answer = data->response_data();
      if (answer == nullptr) continue;
      const auto* state = answer->resp_cond_state();
      const auto* code = state != nullptr ? state->resp_text()->resp_text_code() : nullptr;
      if (code != nullptr && code->type() == IMAPParser::resp_text_code::UIDVALIDITY) {
        validity_ = code->nz_number()->value();
      }
      const auto* mailbox = answer->mailbox_data();
      if (mailbox != nullptr && mailbox->type() == IMAPParser::mailbox_data::EXISTS) {
        count_ = mailbox->number()->value();
      }
    }
  }

  static void Take(const Item& item, Fetched& fetched) {
    if (item.type() == Item::UID) fetched.uid = std::to_string(item.unique_id()->value());
    if (item.type() == Item::BODY_SECTION) fetched.bytes = item.nstring()->value();
    if (item.type() != Item::FLAGS) return;
    for (const auto* flag : item.flag_list()->flags()) {
      if (flag->type() == IMAPParser::flag::SEEN) fetched.isRead = true;
      if (flag->type() == IMAPParser::flag::FLAGGED) fetched.isFlagged = true;
      if (flag->type() == IMAPParser::flag::DELETED) fetched.isDeleted = true;
    }
  }

  vmime::shared_ptr<vmime::net::session> session_;
  vmime::shared_ptr<vmime::net::imap::IMAPStore> store_;
  vmime::shared_ptr<IMAPConnection> connection_;
  std::uint64_t validity_ = 0;
  std::size_t count_ = 0;
};

// A mail's name is "VALIDITY.UID", both numbers.
struct MailId {
  explicit MailId(const std::string& id) : validity(id.substr(0, id.find('.'))) {
    uid = id.substr(validity.size() + 1);
  }
  std::string validity, uid;
};

std::string HeaderFields() {
  std::string names;
  for (const char* name : kMailHeaderFields) names.append(names.empty() ? "" : " ").append(name);
  return "BODY.PEEK[HEADER.FIELDS (" + names + ")]";
}

}  // namespace

std::vector<ListedMail> ImapFolder::List() {
  std::vector<ListedMail> mails;
  TalkTo(server_, [&] {
    Connection connection(server_, patience_);
    if (!connection.Select(name_)) {
      throw RuntimeError::WithDescription(
          ErrorNumber::PathNotFound,
          FromUtf8Roughly("There is no folder '" + name_ + "' below the inbox at '" + server_.host +
                          "'"));
    }
    if (connection.Count() == 0) return;
    const auto start = std::to_string(connection.Validity()) + ".";
    for (auto& mail : connection.Fetch("FETCH 1:* (UID FLAGS " + HeaderFields() + ")")) {
      // A server may tell of changed marks in between.
      if (mail.uid.empty() || !mail.bytes || mail.isDeleted) continue;
      mails.push_back({start + mail.uid, mail.isRead, mail.isFlagged, ReadMailHeader(*mail.bytes)});
    }
  });
  return mails;
}

std::optional<std::string> ImapFolder::Read(const std::string& id) {
  std::optional<std::string> bytes;
  TalkTo(server_, [&] {
    const MailId mail(id);
    Connection connection(server_, patience_);
    if (!connection.Select(name_) || std::to_string(connection.Validity()) != mail.validity) return;
    for (auto& fetched : connection.Fetch("UID FETCH " + mail.uid + " (UID BODY.PEEK[]<0." +
                                          std::to_string(kMostOfMail) + ">)")) {
      if (fetched.uid == mail.uid && fetched.bytes) bytes = std::move(fetched.bytes);
    }
  });
  return bytes;
}

void ImapFolder::Mark(const std::string& id, MailMark mark) {
  TalkTo(server_, [&] {
    const MailId mail(id);
    Connection connection(server_, patience_);
    if (!connection.Select(name_) || std::to_string(connection.Validity()) != mail.validity) return;
    const char* flag = mark == MailMark::Read ? "(\\Seen)" : "(\\Flagged)";
    connection.Do("UID STORE " + mail.uid + " +FLAGS.SILENT " + flag);
  });
}

}  // namespace gorbex
