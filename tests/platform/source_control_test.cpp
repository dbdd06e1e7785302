#include "platform/git/ask_pass.h"
#include "platform/git/words.h"
#include "tests/platform/git_bench.h"
#include "tests/support/memory_source_control.h"

namespace gorbex::test {
namespace {

struct InMemory {
  Journal journal;
  MemorySourceControl client{journal};

  InMemory() { Publish("top.txt", "top\n"); }
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

using Benches = testing::Types<InMemory, GitBench, GitOverHttp>;
TYPED_TEST_SUITE(SourceControls, Benches);

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
  EXPECT_EQ(items[0]->LocalSpec(), "C:\\Work\\A\\B");
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

void ExpectWords(const std::string& error, const std::string& words) {
  EXPECT_NE(error.find(words), std::string::npos) << "no \"" << words << "\" in: " << error;
}

TEST(GitSourceControl, SaysWhyItCannotBeOpened) {
  const std::string work = "[git]\nworktree=Work\n";
  struct Case {
    std::string ini, script, words;
  };
  const Case cases[] = {
      {"[other]\n", "", "SourceSafe databases can only be opened on Windows"},
      {"[git]\nremote=x\n", "", "has no line 'worktree='"},
      {"[git]\nworktree=No\n", "", "Path not found: 'C:\\No'"},
      {"[git]\nworktree=.\n", "", "fatal: not a git repository"},
      {"[git]\nworktree=c:/Work/Sub\n", "mkdir Sub", "not the top of its git working tree"},
      {work, "git checkout -q --detach", "No branch is checked out"},
      {work + "branch=next\n", "", "is 'main', not 'next'"},
      {work, "git checkout -qb new", "'origin' has no branch 'new'"},
      {work + "branch=*\n", "git checkout -q --detach", "'*' cannot be the name of a branch"},
      {work + "remote=ext::touch pwned\n", "", "No such remote"},
      {work + "remote=--upload-pack=x\n", "", "No such remote"},
      {work, "git remote set-url origin /none", "does not appear to be a git repository"}};
  for (const Case& c : cases) {
    GitBench bench;
    bench.Work(c.script);
    bench.files.Write("C:\\scc.ini", c.ini);
    ExpectWords(bench.OpenError(), c.words);
    EXPECT_EQ(bench.client.UserName(), "");
  }
  GitBench bench;
  const Variable path("PATH", "");
  EXPECT_EQ(bench.OpenError(), "git is not installed: there is no program 'git'");
  bench.files.Remove("C:\\scc.ini");
  EXPECT_EQ(bench.OpenError(), "File not found: 'C:\\scc.ini'");
}

TEST(GitSourceControl, LosesNothingWhenAGetFails) {
  struct Case {
    std::string script, words;
  };
  const Case cases[] = {
      {"echo mine >top.txt", "\ttop.txt"},
      {"echo mine >z.bin", "\tz.bin"},
      {"echo mine >z.bin; echo '*.bin' >.git/info/exclude", "\tz.bin"},
      {"echo mine >own; git add own; git commit -qm own", "Not possible to fast-forward"},
      {"echo mine >own; git config filter.no.smudge false; git config filter.no.required true;"
       "echo 'z.bin filter=no' >.git/info/attributes",
       "smudge filter no failed"},
      {"echo mine >own; git checkout -qb side", "is 'side', not 'main'"}};
  const std::string state =
      "git rev-parse HEAD; git status --porcelain --ignored; cat *; ls .git/*.lock || :";
  for (const Case& c : cases) {
    GitBench bench;
    bench.Open();
    bench.Work(c.script + "; git config merge.autoStash true");
    const auto before = bench.Work(state);
    bench.Publish("a/new.txt", "new");
    bench.Publish("top.txt", "newer\n");
    bench.Publish("z.bin", "z");
    ExpectWords(bench.GetError(), c.words);
    EXPECT_EQ(bench.Work(state), before) << c.script;
    ExpectWords(bench.GetError(), c.words);
  }
}

TEST(GitSourceControl, TakesBackWhatTheRemoteRefuses) {
  GitBench bench;
  bench.Open();
  bench.Work("echo staged >other.txt; git add other.txt; printf mine >top.txt");
  const auto head = bench.Work("git rev-parse HEAD");
  bench.Sh("remote.git/hooks",
           "printf '#!/bin/sh\necho not on Fridays; exit 1\n' >pre-receive; chmod +x *");
  const auto file = bench.client.VSSItem("$/TOP.TXT");
  ExpectWords(bench.ErrorOf([&] { file->Checkin("why"); }), "not on Fridays");
  ExpectWords(bench.ErrorOf([&] { file->Label("v1", "why"); }), "not on Fridays");
  EXPECT_EQ(bench.Work("git rev-parse HEAD; git tag"), head);
  EXPECT_EQ(bench.Local("top.txt"), "mine");
  bench.Sh("remote.git/hooks", "rm pre-receive");
  file->Checkin("why");
  file->Checkin("nothing changed");
  EXPECT_EQ(bench.Sh("remote.git", "git log --format=%s main"), "why\ntheirs\n");
  EXPECT_EQ(bench.Work("git status --porcelain"), "A  other.txt\n");
  bench.Work("git commit -qm own; echo again >top.txt");
  ExpectWords(bench.ErrorOf([&] { file->Checkin("why"); }), "push them first");
}

TEST(GitSourceControl, TakesSpecsAndLabelsByTheLetter) {
  GitBench bench;
  bench.Open();
  for (const std::string spec :
       {"", "$", "top.txt", "$/..", "$/a/../b", "$/.git/config", "$/.GIT. /x", "$/git~1", "$/a\\b",
        "$/a\nb", "$/a*", "$/:(top)", "$/."}) {
    EXPECT_THROW(static_cast<void>(bench.client.VSSItem(spec)), RuntimeError) << spec;
  }
  for (const std::string name : {"-x", "--upload-pack=touch pwned", "[a]", "HEAD", "a..b", "!x"}) {
    bench.Publish(name, "1");
    const auto file = bench.client.VSSItem("$/" + name);
    ASSERT_TRUE(file) << name;
    file->Checkout("");
    bench.Locally(name, "2");
    EXPECT_TRUE(file->IsDifferent());
    file->Checkin("");
    EXPECT_EQ(bench.Database(name), "2") << name;
    bench.Sh("other", "git pull -q");
  }
  const auto top = bench.client.VSSItem("$/");
  for (const std::string label : {"", "-d", "--force", "a..b", "a b", "a\nb", "v:w", "*"}) {
    ExpectWords(bench.ErrorOf([&] { top->Label(label, "c"); }), "not a valid tag name");
  }
  EXPECT_EQ(bench.Sh("remote.git", "git tag"), "");
  EXPECT_EQ(bench.Work("find . -name pwned"), "");
}

TEST(GitSourceControl, AsksGitAFewTimesForAWholeScan) {
  GitBench bench;
  bench.Sh("other",
           "for p in $(seq 500); do mkdir p$p; for f in $(seq 20); do : >p$p/f$f; done; done");
  bench.Publish("p7/f7", "x");
  bench.Open();
  const auto calls = bench.Calls();
  auto snapshot = bench.client.Snapshot();
  const auto changed = [&] {
    int count = 0;
    for (int project = 1; project <= 500; ++project) {
      for (const auto& file : bench.client.VSSItem("$/P" + std::to_string(project))->Items()) {
        count += file->IsDifferent() ? 1 : 0;
      }
    }
    return count;
  };
  EXPECT_EQ(changed(), 10'000);
  EXPECT_EQ(bench.Calls() - calls, 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(bench.GetError(), "<none>");
  EXPECT_EQ(changed(), 0);
  EXPECT_LE(bench.Calls() - calls, 8);
  snapshot.reset();
  bench.Publish("p9/f9", "changed");
  EXPECT_TRUE(bench.client.VSSItem("$/p9/f9")->IsDifferent());
}

TEST(GitSourceControl, ShowsThePasswordToTheRightHostAlone) {
  GitOverHttp bench;
  bench.Work("git config credential.helper store");
  bench.Open();
  bench.Publish("top.txt", "newer\n");
  EXPECT_EQ(bench.GetError(), "<none>");
  bench.client.VSSItem("$/")->Label("v1", "c");
  bench.password = "wr0ng word";
  ExpectWords(bench.OpenError(), "Authentication failed");
  EXPECT_EQ(
      WordsOf({128, "", "remote:  \nat 'http://me:top@h/x' with secret \r\nhint: x\n"}, "secret"),
      "at 'http://me:***@h/x' with ***");
  EXPECT_EQ(bench.Sh("", "grep -rlE 's3cr|wr0ng (word|%20)' . || :"), "");

  auto variables = AskPassEnvironment("", {"anna", "pw"}, {"one:80", "two"});
  const auto environment = [&](const char* name) { return variables[name]; };
  std::string codes;
  std::ostringstream out;
  for (const char* question :
       {"Username for 'http://one:80': ", "Password for 'https://anna@two': ",
        "Password for 'http://one@evil': ", "Password for 'http://one': ", "show"}) {
    const char* arguments[] = {"gorbex", question};
    const auto status = AnswerAskPass(2, arguments, environment, out);
    codes += status ? std::to_string(*status) : "-";
  }
  EXPECT_EQ(codes + out.str(), "0011-anna\npw\n");
}

}  // namespace
}  // namespace gorbex::test
