#include <gtest/gtest.h>

#include "freshness/record_file.h"
#include "tests/support/memory_platform.h"

namespace gorbex::test {
namespace {

const std::string kFile = "C:\\built";

BuildRecord Record(const std::string& output, const std::string& version) {
  BuildRecord record{"C:\\G\\A.vbp", output, "01/02/2026 03:04:05", std::chrono::milliseconds(7)};
  record.version = version;
  record.debug = {"0", "-1"};
  using Kind = BuildInput::Kind;
  using State = Fingerprint::State;
  const Fingerprint read{State::Read, {1, 0xFFFFFFFFFFFFFFFF}, FileStamp{5, 6, 7}};
  record.own = {{Kind::Member, "a|b%\t.cls", "", read},
                {Kind::Companion, "a.frx", "", {State::Missing}},
                {Kind::Binary, "", output, {State::Read, {}, std::nullopt}}};
  for (const Fingerprint& print : {read, Fingerprint{State::Unreadable}}) {
    record.shared.push_back(std::make_shared<const BuildInput>(
        BuildInput{Kind::Reference, "{1}#2.0#0", "C:\\x%.dll", print}));
  }
  return record;
}

std::string VersionOf(RecordFile& file, const std::string& output) {
  file.LookAgain();
  const auto found = file.Find("c:\\g\\a.VBP", output);
  return found ? found->version : "none";
}

TEST(RecordFile, GivesBackWhatWasAddedAndTheLastOfEachPlace) {
  MemoryPlatform platform;
  RecordFile file(platform.files, kFile);
  EXPECT_EQ(VersionOf(file, "C:\\o"), "none");
  file.Add(Record("C:\\o", "1"));
  file.Add(Record("C:\\p", "2"));
  file.Add(Record("C:\\O", "3"));
  RecordFile again(platform.files, kFile);
  for (RecordFile* each : {&file, &again}) {
    const auto found = each->Find("C:\\G\\A.vbp", "C:\\o");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->own, Record("C:\\O", "").own);
    ASSERT_EQ(found->shared.size(), 2U);
    EXPECT_EQ(*found->shared[0], *Record("", "").shared[0]);
    EXPECT_EQ(*found->shared[1], *Record("", "").shared[1]);
    EXPECT_EQ(VersionOf(*each, "C:\\o") + VersionOf(*each, "C:\\p"), "32");
  }
}

TEST(RecordFile, TakesWhatIsDamagedForMissingAndKeepsTheRest) {
  MemoryPlatform platform;
  auto& files = platform.files;
  RecordFile(files, kFile).Add(Record("C:\\o", "1"));
  const std::string first = files.Text(kFile);
  RecordFile(files, kFile).Add(Record("C:\\o", "2"));
  const std::string second = files.Text(kFile).substr(first.size());
  const std::pair<std::string, std::string> cases[] = {
      {first + second, "2"},
      {first + second.substr(0, second.size() - 1), "1"},
      {first + second.substr(0, 20), "1"},
      {first + "\n\ngarbage\n1\t\n" + std::string("\0\n", 2) + second, "2"},
      {first + "1" + second.substr(1), "1"},
      {first.substr(0, 40) + "X" + first.substr(41), "none"},
      {first.substr(0, first.size() - 9) + "!" + first.substr(first.size() - 8), "none"},
      {first.substr(first.find("\n2\t") + 1), "none"},
      {std::string(5000, '\0'), "none"},
      {"", "none"}};
  for (const auto& [text, version] : cases) {
    files.AddFile(kFile, text);
    RecordFile file(files, kFile);
    EXPECT_EQ(VersionOf(file, "C:\\o"), version) << text;
    file.Add(Record("C:\\o", "3"));
    RecordFile again(files, kFile);
    EXPECT_EQ(VersionOf(again, "C:\\o"), "3") << "added after " << text;
  }
  files.Remove(kFile);
  files.AddFolder(kFile);
  RecordFile file(files, kFile);
  EXPECT_EQ(VersionOf(file, "C:\\o"), "none");
  EXPECT_THROW(file.Add(Record("C:\\o", "1")), RuntimeError);
}

TEST(RecordFile, FollowsAnotherProgramAndForgetsWhatIsReplaced) {
  MemoryPlatform platform;
  RecordFile one(platform.files, kFile);
  RecordFile other(platform.files, kFile);
  const std::size_t line = LineOf(Record("C:\\o", "1000"), {1, 2}).size();
  for (int i = 0; i < 1000; ++i) {
    RecordFile& writer = i % 3 == 0 ? other : one;
    writer.Add(Record("C:\\o" + std::to_string(i % 50), std::to_string(i)));
    ASSERT_EQ(VersionOf(one, "C:\\o" + std::to_string(i % 50)), std::to_string(i));
  }
  EXPECT_EQ(VersionOf(other, "C:\\o49"), "999");
  EXPECT_EQ(VersionOf(other, "C:\\o41"), "none") << "only the last places of a project are kept";
  EXPECT_LT(platform.files.Text(kFile).size(), std::size_t{64} * 1024 + 20 * line);
}

}  // namespace
}  // namespace gorbex::test
