#include <gtest/gtest.h>

#include "automation_servers.h"
#include "platform/windows/file_system.h"
#include "platform/windows/source_control.h"
#include "platform/windows/tool.h"
#include "tests/platform/outcome.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

constexpr const char* kDatabase = R"(VSSDatabase.Open=
VSSDatabase.UserName=anna
VSSDatabase.VSSItem=@VSSItem
VSSItem.LocalSpec=C:\Work
VSSItem.Type=1
VSSItem.Items=@VSSItems
VSSItem.IsDifferent=True
VSSItem.Get=
VSSItem.Label=
VSSItem.Checkout=
VSSItem.Checkin=
VSSItems.Count=2
VSSItems.Item=@VSSItem)";

struct SourceSafeTest : testing::Test {
  AutomationServers servers{kDatabase};
  WindowsFileSystem files;
  WindowsToolRunner tools;
  WindowsSourceControl client{tools, files, ""};
  std::string folder = WindowsPath(servers.root.Path());

  SourceSafeTest() { servers.root.Put("srcsafe.ini", "Data_Path = data\r\n"); }
  void Open() { client.Open(folder + "\\srcsafe.ini", "anna", "s3cr\xE9t"); }
};

TEST_F(SourceSafeTest, IsAskedByNameInTheLettersOfItsList) {
  Open();
  EXPECT_EQ(client.UserName(), "anna");
  EXPECT_EQ(servers.Journal(), "VSSDatabase.Open(\"" + folder +
                                   "\\srcsafe.ini\", \"anna\", \"s3cr\u00E9t\")\n"
                                   "VSSDatabase.UserName\n");
  const auto project = client.VSSItem("$/");
  EXPECT_EQ(project->LocalSpec(), "C:\\Work");
  project->Get("C:\\Work", 0x4022000);
  project->Label("v1 \xE9", "why");
  EXPECT_EQ(servers.Journal(),
            "VSSDatabase.VSSItem(\"$/\", False)\nVSSItem.LocalSpec\n"
            "VSSItem.Get(\"C:\\Work\", 67248128)\nVSSItem.Label(\"v1 \u00E9\", \"why\")\n");
  const auto items = project->Items();
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items[0]->Type(), SourceItemType::File);
  EXPECT_TRUE(items[1]->IsDifferent());
  items[0]->Checkout("out");
  items[0]->Checkin("in");
  EXPECT_EQ(servers.Journal(),
            "VSSItem.Items(False)\nVSSItems.Count\nVSSItems.Item(1)\nVSSItems.Item(2)\n"
            "VSSItem.Type\nVSSItem.IsDifferent()\nVSSItem.Checkout(\"out\")\n"
            "VSSItem.Checkin(\"in\")\n");
  servers.Answer("VSSItem.Type", "0");
  EXPECT_EQ(items[0]->Type(), SourceItemType::Project);
  servers.Answer("VSSDatabase.VSSItem", "");
  EXPECT_FALSE(client.VSSItem("$/none.txt"));
  servers.Answer("VSSDatabase.Open", "!8004D6A1|It is locked");
  EXPECT_EQ(ErrorOf([&] { Open(); }), "-2147166559 It is locked");
  EXPECT_EQ(client.UserName(), "anna");
}

TEST_F(SourceSafeTest, LetsEventsBeHandledAndFinishesWhatTheyInterrupt) {
  RecordingEvents events;
  client.Handle(events);
  Open();
  const auto project = client.VSSItem("$/");
  servers.Answer("VSSItem.Get", "~");
  servers.Journal();
  events.count = 0;
  events.onEvents = [&] {
    events.onEvents = nullptr;
    throw RuntimeError::WithDescription(ErrorNumber::AutomationError, "Ended on request");
  };
  EXPECT_EQ(ErrorOf([&] { project->Get("C:\\Work", 1); }), "440 Ended on request");
  EXPECT_EQ(servers.Journal(), "VSSItem.Get(\"C:\\Work\", 1)\n");
  EXPECT_GT(events.count, 10);
}

TEST_F(SourceSafeTest, IsChosenByTheInitialisationFile) {
  const auto open = [&](const std::string& text) {
    servers.root.Put("srcsafe.ini", text);
    return ErrorOf([&] { Open(); });
  };
  EXPECT_EQ(open("[git]\nworktree=none\n"), "76 Path not found: '" + folder + "\\none'");
  EXPECT_EQ(servers.Journal(), "");
  EXPECT_EQ(client.UserName(), "");
  EXPECT_NE(ErrorOf([&] { static_cast<void>(client.VSSItem("$/")); }), "<none>");
  EXPECT_EQ(open(""), "<none>");
  EXPECT_EQ(open("[git]\n").substr(0, 2), "5 ");
  EXPECT_TRUE(client.VSSItem("$/"));
  AutomationServers::Remove(L"SourceSafe");
  EXPECT_EQ(open("#"),
            "429 ActiveX component can't create object: 'SourceSafe': it is not registered");
}

}  // namespace
}  // namespace gorbex::test
