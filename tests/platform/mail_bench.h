#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>

#include "platform/linux/child_process.h"
#include "platform/linux/file_system.h"
#include "platform/linux/host_file.h"
#include "platform/linux/mail/mail.h"
#include "platform/linux/program_lock.h"
#include "platform/linux/tool.h"
#include "tests/platform/linux/variable.h"
#include "tests/platform/outcome.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {

/// "RECIPIENT,...|SUBJECT|BODY|NAME=BYTES|..." of a mail, by a reader that is not ours.
inline constexpr const char* kShowMail = R"(
import email.policy, sys
mail = email.message_from_bytes(sys.stdin.buffer.read(), policy=email.policy.default)
body = mail.get_body().get_content().replace("\r\n", "\n")
parts = [f"{p.get_filename()}={p.get_content().hex()}" for p in mail.iter_attachments()]
sys.stdout.buffer.write("|".join([",".join(a.addr_spec for a in mail["To"].addresses),
    mail["Subject"], body, *parts]).encode())
)";

/// A Maildir in its own home folder, and a program that keeps what it is given to send.
class MaildirBench {
 public:
  std::string drive = "C:\\";
  TemporaryFolder root;
  Variable home{"HOME", root.Path().native()};
  Prefix prefix{root.Path() / "prefix"};
  LinuxFileSystem files{prefix};
  LinuxToolRunner tools{prefix};
  RecordingEvents events;
  std::chrono::system_clock::time_point now = std::chrono::system_clock::now();
  LinuxMail mail{files, tools, OutboxUses(), std::chrono::seconds(2)};

  MaildirBench() {
    mail.Handle(events);
    for (const char* folder : {"Maildir", "Maildir/.Builder"}) {
      for (const char* part : {"cur", "new", "tmp"}) {
        std::filesystem::create_directories(root.Path() / folder / part);
      }
    }
    root.Put("sendmail",
             "#!/bin/sh\ncd \"$(dirname \"$0\")\"\necho \"$@\" >called\ncat >sent.eml\n");
    std::filesystem::permissions(root.Path() / "sendmail", std::filesystem::perms::owner_all);
  }

  Outbox::Uses OutboxUses() {
    return {root.Path() / "outbox",
            [](const auto& file, const auto& bytes) { ReplaceHostFile(file, bytes, 0600); },
            &ProgramLock::Try, [this] { return now; }};
  }
  [[nodiscard]] MailAccount Account() const {
    return {"", "sendmail://" + (root.Path() / "sendmail").native(), "builder@host.example"};
  }
  void DeliverRaw(const std::string& mailText, const std::string& name = "") {
    const auto file = name.empty() ? "new/" + std::to_string(++delivered_) + ".m-S.host" : name;
    root.Put("Maildir/.Builder/" + file, mailText);
  }
  void Deliver(const std::string& subject, const std::string& body) {
    DeliverRaw("From: Anna Berg <anna@dev.example>\nSubject: " + subject + "\n\n" + body);
  }
  void Vanish() {
    for (const char* part : {"new", "cur"}) {
      std::filesystem::remove_all(root.Path() / "Maildir/.Builder" / part);
      std::filesystem::create_directory(root.Path() / "Maildir/.Builder" / part);
    }
  }
  std::string Sent() { return Show(root.Get("sent.eml")); }

  std::string Show(const std::string& mailText) {
    ToolCall call{"python3", {"-c", kShowMail}, "C:\\"};
    call.input = mailText;
    const auto outcome = tools.Run(call);
    const auto& result = std::get<ToolResult>(outcome);
    EXPECT_EQ(result.errorOutput, "");
    return result.output;
  }
  std::vector<std::string> FilesOf(const std::string& part) const {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(root.Path() / "Maildir/.Builder" / part)) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  int delivered_ = 0;
};

/// The same Maildir served by real servers.
class ServerBench : public MaildirBench {
 public:
  Variable trust{"SSL_CERT_FILE", (root.Path() / "cert.pem").native()};
  int imap = 0, imaps = 0, smtp = 0, smtps = 0, silent = 0, rude = 0;

  ServerBench() {
    for (int i = 0; i < 1000 && !std::filesystem::exists(root.Path() / "ports"); ++i) {
      if (server_.ExitCode(std::chrono::milliseconds(20))) break;
    }
    std::istringstream(root.Get("ports")) >> imap >> imaps >> smtp >> smtps >> silent >> rude;
    if (rude == 0) throw std::runtime_error("no mail servers: " + root.Get("dovecot.log"));
  }
  ~ServerBench() { server_.End(std::chrono::seconds(5)); }

  static std::string Url(const std::string& scheme, int port,
                         const std::string& login = "anna:s3cret%20w%C3%A9rd@",
                         const std::string& host = "localhost") {
    return scheme + "://" + login + host + ":" + std::to_string(port);
  }
  [[nodiscard]] MailAccount Account() const {
    return {Url("imap", imap), Url("smtp", smtp), "builder@host.example"};
  }
  std::string Sent() {
    const auto text = SentFile();
    return Show(text.substr(text.find("\n\n") + 2));
  }
  /// The newest mail that the server took, its envelope first.
  std::string SentFile() const {
    int count = 0;
    while (std::filesystem::exists(root.Path() / "sent" / std::to_string(count))) ++count;
    return root.Get("sent/" + std::to_string(count - 1));
  }

 private:
  ChildProcess server_{
      {{*FindOnHost("python3"), MAIL_SERVERS, root.Path().native(), "anna", "s3cret w\u00E9rd"},
       EnvironmentWith({})}};
};

}  // namespace gorbex::test
