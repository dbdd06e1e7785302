#include "platform/windows/automation_objects.h"

#include <gtest/gtest.h>

#include "automation_servers.h"
#include "tests/platform/outcome.h"

namespace gorbex::test {
namespace {

TEST(AutomationObjects, UseARealComponentByNameAlsoAfterTheServiceIsGone) {
  const auto dictionary = AutomationObjects().CreateObject("Scripting.Dictionary");
  EXPECT_EQ(dictionary->Get("COUNT"), "0");
  EXPECT_EQ(dictionary->Get("CompareMode"), "0");
  dictionary->Let("comparemode", "1");
  EXPECT_EQ(dictionary->Get("CompareMode"), "1");
  EXPECT_EQ(ErrorOf([&] { dictionary->Let("Count", "1"); }),
            "383 Set not supported (read-only property): 'Count'");
  EXPECT_EQ(ErrorOf([&] { dictionary->Let("CompareMode", "\xE9"); }),
            "13 Type mismatch: 'CompareMode'");
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(dictionary->Get("None")); }),
            "438 Object doesn't support this property or method: 'None'");
}

TEST(AutomationObjects, TakeAndGiveTextsForValuesOfOtherTypes) {
  AutomationObjects objects;
  const auto document = objects.CreateObject("Msxml2.DOMDocument");
  EXPECT_EQ(document->Get("async"), "True");
  document->Let("async", "False");
  EXPECT_EQ(document->Get("async"), "False");
  EXPECT_EQ(ErrorOf([&] { document->Let("async", "perhaps"); }), "13 Type mismatch: 'async'");
  const auto files = objects.CreateObject("Scripting.FileSystemObject");
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(files->Get("Drives")); }),
            "13 Type mismatch: 'Drives'");
  const auto shell = objects.CreateObject("WScript.Shell");
  const auto error = ErrorOf([&] { shell->Let("CurrentDirectory", "C:\\none"); });
  EXPECT_TRUE(error.starts_with("440 Automation error: 'CurrentDirectory' (")) << error;
}

TEST(AutomationObjects, AreHeardInTheirOwnWordsUnderTheirOwnNumber) {
  const AutomationServers servers("Component.Caption=caf\u00E9");
  const auto object = AutomationObjects().CreateObject("GorbexTest.Free");
  object->Let("caption", "caf\xE9");
  EXPECT_EQ(object->Get("Caption"), "caf\xE9");
  EXPECT_EQ(servers.Journal(), "Component.Caption = \"caf\u00E9\"\nComponent.Caption\n");
  const std::pair<std::string, std::string> cases[] = {
      {"!80040201|caf\u00E9 \u0416", "-2147220991 caf\xE9 ?"},
      {"!80020005|own words", "13 own words"},
      {"!800A0005|own words", "5 own words"},
      {"!0|own words", "440 own words"}};
  for (const auto& [failure, error] : cases) {
    servers.Answer("Component.Caption", failure);
    EXPECT_EQ(ErrorOf([&] { object->Let("Caption", "x"); }), error);
  }
}

TEST(AutomationObjects, LetGoOfAComponentThatNobodyUses) {
  const AutomationServers servers("Component.Caption=x");
  const auto* const file = L"libautomation_servers.dll";
  AutomationObjects objects;
  auto object = objects.CreateObject("GorbexTest.Free");
  objects.LetGoOfUnused();
  EXPECT_EQ(object->Get("Caption"), "x");
  object.reset();
  EXPECT_NE(GetModuleHandleW(file), nullptr);
  objects.LetGoOfUnused();
  EXPECT_EQ(GetModuleHandleW(file), nullptr);
}

TEST(AutomationObjects, SayWhyAnObjectCannotBeMade) {
  AutomationObjects objects;
  const std::string start = "429 ActiveX component can't create object: ";
  for (const std::string name : {"", "No.Such", "No\\CLSID", "{0}"}) {
    const auto error = start + (name.empty() ? "" : "'" + name + "': ") + "it is not registered";
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(objects.CreateObject(name)); }), error);
    EXPECT_EQ(ErrorOf([&] { objects.AddLicense(name); }), error);
  }
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(objects.CreateControl("Scripting.Dictionary", {})); }),
            start + "'Scripting.Dictionary': user controls cannot be shown here");
}

}  // namespace
}  // namespace gorbex::test
