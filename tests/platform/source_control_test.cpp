#include "tests/platform/git_bench.h"
#include "tests/support/memory_source_control.h"

namespace gorbex::test {
namespace {

/// A source-control database in memory.
struct MemorySourceControlBench {
  Journal journal;
  MemorySourceControl client{journal};
  std::string work = "C:\\Work";

  MemorySourceControlBench() { Publish("top.txt", "top\n"); }
  void Open() { client.Open("C:\\scc.ini", "anna", ""); }
  MemorySourceControl::Sides& Of(const std::string& name) { return client.files["$/" + name]; }
  void Publish(const std::string& name, const std::string& text) { Of(name).database = text; }
  void Locally(const std::string& name, const std::optional<std::string>& text) {
    Of(name).working = text;
  }
  std::string Local(const std::string& name) { return Of(name).working.value_or(""); }
  std::string Database(const std::string& name) { return *Of(name).database; }
  bool HasLabel(const std::string& label) { return client.labels.contains(label); }
};

template <typename Bench>
class SourceControls : public testing::Test {
 protected:
  std::unique_ptr<SourceControlItem> Item(const std::string& spec) {
    return bench_.client.VSSItem(spec);
  }
  void Get() { Item("$/")->Get(Item("$/")->LocalSpec(), 0x4022000); }

  Bench bench_;
};

using SourceControlBenches = testing::Types<MemorySourceControlBench, GitBench, GitOverHttp>;
TYPED_TEST_SUITE(SourceControls, SourceControlBenches);

TYPED_TEST(SourceControls, AnswerAboutItems) {
  auto& bench = this->bench_;
  EXPECT_THROW(this->Item("$/"), RuntimeError);
  bench.Open();
  EXPECT_NE(bench.client.UserName(), "");
  bench.Publish("A/x \xC3\xA9.txt", "x");
  bench.Publish("A/B/y.txt", "y");
  const auto folder = this->Item("$/A");
  ASSERT_TRUE(folder);
  EXPECT_EQ(folder->Type(), SourceItemType::Project);
  const auto items = folder->Items();
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items[0]->Type(), SourceItemType::Project);
  EXPECT_EQ(items[0]->LocalSpec(), bench.work + "\\A\\B");
  EXPECT_EQ(items[1]->Type(), SourceItemType::File);
  EXPECT_FALSE(this->Item("$/A/none.txt"));
}

TYPED_TEST(SourceControls, GetWhatDiffersAndKeepWhatIsChanged) {
  auto& bench = this->bench_;
  bench.Open();
  bench.Publish("A/x.txt", "1");
  const auto file = this->Item("$/A/x.txt");
  EXPECT_TRUE(file->IsDifferent());
  this->Get();
  EXPECT_FALSE(file->IsDifferent());
  EXPECT_EQ(bench.Local("A/x.txt"), "1");
  for (const auto& text : {std::optional<std::string>(), std::optional<std::string>("mine")}) {
    bench.Locally("A/x.txt", text);
    EXPECT_TRUE(file->IsDifferent());
  }
  bench.Publish("A/x.txt", "2");
  EXPECT_THROW(this->Get(), RuntimeError);
  EXPECT_EQ(bench.Local("A/x.txt"), "mine");
  bench.Locally("A/x.txt", "1");
  this->Get();
  EXPECT_EQ(bench.Local("A/x.txt"), "2");
}

TYPED_TEST(SourceControls, CheckOutAndInAndLabel) {
  auto& bench = this->bench_;
  bench.Open();
  this->Get();
  bench.Publish("top.txt", "newer\n");
  const auto file = this->Item("$/top.txt");
  file->Checkout("why");
  EXPECT_EQ(bench.Local("top.txt"), "newer\n");
  bench.Locally("top.txt", "mine");
  EXPECT_THROW(file->Checkout("again"), RuntimeError);
  EXPECT_EQ(bench.Local("top.txt"), "mine");
  file->Checkin("-because \xE9");
  EXPECT_EQ(bench.Database("top.txt"), "mine");
  EXPECT_FALSE(file->IsDifferent());
  this->Item("$/")->Label("v1", "first");
  EXPECT_TRUE(bench.HasLabel("v1"));
  EXPECT_THROW(this->Item("$/")->Label("v1", "again"), RuntimeError);
}

}  // namespace
}  // namespace gorbex::test
