#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/support/build_fixture.h"

namespace gorbex::test {

/// The mail service, switched on, with two projects loaded; ticks are fired by the test.
class MailFixture : public BuildFixture {
 protected:
  MailFixture() {
    Load({"Base", "Core"});
    platform.files.AddFile("C:\\Drops\\Core.dll", "built");
    program.options.Interval = 30;
    menu.mnuToolsInBox.Execute();
    Steps();
  }

  /// One tick over only these mails.
  Journal Tick(std::vector<MemoryMail::Received> mails) {
    mail.received = std::move(mails);
    mail.sent.clear();
    Steps();
    window.tmrOutlook.elapsed.Emit();
    return Steps();
  }

  /// The one reply to a body.
  MemoryMail::Sent ReplyTo(const std::string& body) {
    tick = Tick({{.body = body}});
    EXPECT_EQ(mail.sent.size(), 1U) << body;
    return mail.sent.empty() ? MemoryMail::Sent{} : mail.sent.front();
  }

  [[nodiscard]] std::string LastLog() const {
    const auto lines = Only(tick, {"log"});
    return lines.empty() ? "" : lines.back().substr(4);
  }

  [[nodiscard]] std::string ServiceState() const {
    return std::string(menu.mnuToolsInBox.checked.Get() ? "on" : "off") +
           (window.tmrOutlook.enabled.Get() ? " ticking" : "") +
           (menu.mnuFileBuild.enabled.Get() ? " build" : "") +
           (window.mousePointer.Get() == MousePointer::Default ? "" : " hourglass") + ": " +
           window.stbStatus.Get();
  }

  void Set(const std::string& name, const std::string& value) {
    program.registry.subSetRegistryValue(kProgramKey, name, value);
  }

  Journal tick;  ///< what the last request brought about
  MemoryMail& mail = platform.mail;
  frmBuilder& window = program.window;
  MainMenu& menu = window.menu;
  const std::string core = Group::Path("Core");
};

}  // namespace gorbex::test
