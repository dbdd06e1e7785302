#include <gtest/gtest.h>

#include "source_control_benches.h"
#include "tests/support/recording_events.h"

namespace gorbex::test {
namespace {

std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return std::to_string(error.Number()) + " " + error.Description();
  }
  return "<none>";
}

TEST(SourceSafe, IsAskedByNameInTheLettersOfItsList) {
  SourceSafeBench bench;
  bench.Open();
  EXPECT_EQ(bench.client.UserName(), "anna");
  EXPECT_EQ(bench.servers.Journal(), "VSSDatabase.Open(\"" + bench.folder +
                                         "\\srcsafe.ini\", \"anna\", \"s3cr\u00E9t\")\n"
                                         "VSSDatabase.UserName()\n");
  const auto project = bench.client.VSSItem("$/");
  EXPECT_EQ(bench.servers.Journal(), "VSSDatabase.VSSItem(\"$/\", False)\n");
  EXPECT_EQ(project->LocalSpec(), bench.work);
  project->Get(bench.work, 0x4022000);
  project->Label("v1 \xE9", "why");
  EXPECT_EQ(bench.servers.Journal(), "VSSItem.LocalSpec()\nVSSItem.Get(\"" + bench.work +
                                         "\", 67248128)\nVSSItem.Label(\"v1 \u00E9\", \"why\")\n");
  const auto file = std::move(project->Items().at(0));
  EXPECT_EQ(file->Type(), SourceItemType::File);
  EXPECT_FALSE(file->IsDifferent());
  file->Checkout("out");
  file->Checkin("in");
  EXPECT_EQ(bench.servers.Journal(),
            "VSSItem.Items(False)\nVSSItems.Count()\nVSSItems.Item(1)\nVSSItem.Type()\n"
            "VSSItem.IsDifferent()\nVSSItem.Checkout(\"out\")\nVSSItem.Checkin(\"in\")\n");
}

TEST(SourceSafe, IsHeardInItsOwnWordsUnderItsOwnNumber) {
  SourceSafeBench bench;
  bench.Open();
  const auto item = bench.client.VSSItem("$/top.txt");
  const auto project = bench.client.VSSItem("$/");
  const std::pair<std::string, std::function<void()>> operations[] = {
      {"VSSDatabase.Open", [&] { bench.Open(); }},
      {"VSSDatabase.VSSItem", [&] { static_cast<void>(bench.client.VSSItem("$/")); }},
      {"VSSItem.LocalSpec", [&] { static_cast<void>(item->LocalSpec()); }},
      {"VSSItem.Type", [&] { static_cast<void>(item->Type()); }},
      {"VSSItem.Items", [&] { static_cast<void>(project->Items()); }},
      {"VSSItems.Item", [&] { static_cast<void>(project->Items()); }},
      {"VSSItem.IsDifferent", [&] { static_cast<void>(item->IsDifferent()); }},
      {"VSSItem.Get", [&] { item->Get("C:\\x", 0x4022000); }},
      {"VSSItem.Label", [&] { item->Label("v", "c"); }},
      {"VSSItem.Checkout", [&] { item->Checkout("c"); }},
      {"VSSItem.Checkin", [&] { item->Checkin("c"); }}};
  for (const auto& [call, operation] : operations) {
    bench.servers.Fail(call, "8004D6A1", "File caf\u00E9 \u0416 is locked");
    EXPECT_EQ(ErrorOf(operation), "-2147166559 File caf\xE9 ? is locked") << call;
    EXPECT_EQ(bench.client.UserName(), "anna");
  }
  const std::pair<std::string, std::string> numbers[] = {{"800A0046", "70 no"},
                                                         {"80020005", "13 no"}};
  for (const auto& [number, error] : numbers) {
    bench.servers.Fail("VSSItem.Get", number, "no");
    EXPECT_EQ(ErrorOf([&] { item->Get("C:\\x", 0); }), error);
  }
}

TEST(SourceSafe, LetsEventsBeHandledAndFinishesWhatTheyInterrupt) {
  SourceSafeBench bench;
  RecordingEvents events;
  bench.client.Handle(events);
  bench.Open();
  const auto project = bench.client.VSSItem("$/");
  bench.servers.Fail("VSSItem.Get", "0", "silence");
  events.count = 0;
  events.onEvents = [&] {
    events.onEvents = nullptr;
    throw RuntimeError::WithDescription(ErrorNumber::AutomationError, "Ended on request");
  };
  EXPECT_EQ(ErrorOf([&] { project->Get(bench.work, 0x4022000); }), "440 Ended on request");
  EXPECT_EQ(bench.Local("top.txt"), "top\n");
  EXPECT_GT(events.count, 10);
}

TEST(SourceControlOfWindows, IsChosenByTheInitialisationFile) {
  SourceSafeBench bench;
  const auto open = [&](const std::string& text) {
    bench.servers.root.Put("srcsafe.ini", text);
    return ErrorOf([&] { bench.Open(); });
  };
  EXPECT_EQ(open("[git]\nworktree=none\n"), "76 Path not found: '" + bench.folder + "\\none'");
  EXPECT_EQ(bench.servers.Journal(), "");
  EXPECT_EQ(bench.client.UserName(), "");
  EXPECT_NE(ErrorOf([&] { static_cast<void>(bench.client.VSSItem("$/")); }), "<none>");
  EXPECT_EQ(open(""), "<none>");
  EXPECT_EQ(open("[git]\n").substr(0, 2), "5 ");
  EXPECT_TRUE(bench.client.VSSItem("$/"));
  AutomationServers::Remove(L"SourceSafe");
  EXPECT_EQ(open("#"),
            "429 ActiveX component can't create object: 'SourceSafe': it is not registered");
}

}  // namespace
}  // namespace gorbex::test
