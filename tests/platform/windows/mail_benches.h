#pragma once

#include <gtest/gtest.h>

#include <string>

#include "automation_servers.h"
#include "platform/windows/file_system.h"
#include "platform/windows/outlook.h"
#include "tests/platform/memory_mail_bench.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {

/// Outlook over a folder.
class OutlookBench {
 public:
  AutomationServers servers;
  WindowsFileSystem files;
  RecordingEvents events;
  Outlook mail{files, std::chrono::milliseconds(500)};
  std::string drive = WindowsPath(servers.root.Path()) + "\\";

  OutlookBench() {
    mail.Handle(events);
    for (const char* folder : {"Builder", "Deleted"}) {
      std::filesystem::create_directory(servers.root.Path() / folder);
    }
  }
  [[nodiscard]] MailAccount Account() const { return {}; }
  void DeliverRaw(const std::string& properties, const std::string& body) {
    servers.root.Put("Builder/" + std::to_string(++delivered_), properties + "\n" + body);
  }
  void Deliver(const std::string& subject, const std::string& body) {
    DeliverRaw(
        "MessageClass=IPM.Note\nSenderEmailType=SMTP\nSenderName=Anna Berg\n"
        "SenderEmailAddress=anna@dev.example\nSubject=" +
            subject + "\n",
        body);
  }
  void Vanish() const {
    for (const auto& file : std::filesystem::directory_iterator(servers.root.Path() / "Builder")) {
      std::filesystem::rename(file, servers.root.Path() / "Deleted" / file.path().filename());
    }
  }
  std::string Sent() const {
    auto text = servers.root.Get("sent");
    std::erase(text, '\r');
    return text;
  }

 private:
  int delivered_ = 0;
};

using MailBenches = testing::Types<MemoryMailBench, OutlookBench>;

}  // namespace gorbex::test
