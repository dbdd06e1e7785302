#include "tests/platform/git_bench.h"

namespace gorbex::test {
namespace {

TEST(GitSourceControl, ChecksNothingOutOrInBehindALink) {
  GitBench bench;
  bench.Sh("other", "mkdir App; echo x >App/x; ln -s top.txt link; ln -s /etc/passwd out");
  bench.Publish("z", "z");
  bench.Open();
  EXPECT_EQ(bench.GetError(), "<none>");
  bench.Work("mv App ../Own; ln -s ../Own App; chmod a-w ../Own/x top.txt");
  const auto head = bench.Work("git rev-parse HEAD");
  for (const std::string name : {"App/x", "link", "out"}) {
    const auto file = bench.client.VSSItem("$/" + name);
    ASSERT_TRUE(file) << name;
    for (const auto& operation : std::initializer_list<std::function<void()>>{
             [&] { file->Checkout("c"); }, [&] { file->Checkin("c"); }}) {
      ExpectWords(ErrorOf(operation),
                  "'C:\\Work\\" + name.substr(0, name.find('/')) + "' is a link; only a file");
    }
  }
  EXPECT_EQ(bench.Work("git rev-parse HEAD; find ../Own/x top.txt -perm -u+w"), head);
}

TEST(GitSourceControl, FollowsABranchOfAnyName) {
  GitBench bench;
  bench.Sh("other", "git push -q origin HEAD:refs/heads/a=b.c=");
  bench.Work(
      "git fetch -q; git checkout -q a=b.c=; git config branch.a=b.c=.mergeOptions '-s ours'");
  bench.Open();
  bench.Sh("other", "echo newer >top.txt; git commit -qam x; git push -q origin HEAD:a=b.c=");
  EXPECT_EQ(bench.GetError(), "<none>");
  EXPECT_EQ(bench.Local("top.txt"), "newer\n");
}

TEST(GitSourceControl, KnowsNoItemThatStandsInTheWorkingTreeAlone) {
  GitBench bench;
  bench.Open();
  bench.Locally("own.txt", "mine");
  const auto own = bench.client.VSSItem("$/own.txt");
  EXPECT_TRUE(own->IsDifferent());
  const std::function<void()> operations[] = {
      [&] { own->Get(own->LocalSpec(), 0x4022000); }, [&] { own->Label("v1", "c"); },
      [&] { own->Checkout("c"); }, [&] { own->Checkin("c"); }};
  for (const auto& operation : operations) {
    ExpectWords(ErrorOf(operation), "There is no item '$/own.txt' in the branch 'main'");
  }
  EXPECT_FALSE(bench.HasLabel("v1"));
}

TEST(GitSourceControl, TellsWhatDiffersByWhatFilesHold) {
  GitBench bench;
  bench.Open();
  bench.Work("git config diff.autoRefreshIndex false; git config core.fileMode true");
  for (const char* script : {"chmod +x top.txt", "touch -d 2001-01-01 top.txt"}) {
    bench.Work(script);
    EXPECT_FALSE(bench.client.VSSItem("$/top.txt")->IsDifferent()) << script;
  }
  bench.Work("git status");
  bench.Sh("other", "git update-index --chmod=+x top.txt; git commit -qm run; git push -q");
  EXPECT_FALSE(bench.client.VSSItem("$/top.txt")->IsDifferent());
  EXPECT_EQ(bench.GetError(), "<none>");
}

TEST(GitSourceControl, TakesBackWhatTheRemoteRefuses) {
  GitBench bench;
  bench.Open();
  bench.Work(
      "echo staged >other.txt; git add other.txt; printf staged >top.txt; "
      "git add top.txt; printf mine >top.txt");
  const auto head = bench.Work("git rev-parse HEAD; git ls-files --stage");
  bench.Sh("remote.git/hooks",
           "printf '#!/bin/sh\necho not on Fridays; exit 1\n' >pre-receive; chmod +x *");
  const auto file = bench.client.VSSItem("$/TOP.TXT");
  ExpectWords(ErrorOf([&] { file->Checkin("why"); }), "not on Fridays");
  ExpectWords(ErrorOf([&] { file->Label("v1", "why"); }), "not on Fridays");
  EXPECT_EQ(bench.Work("git rev-parse HEAD; git ls-files --stage; git tag"), head);
  EXPECT_EQ(bench.Local("top.txt"), "mine");
  bench.Sh("remote.git/hooks", "rm pre-receive");
  file->Checkin("why");
  file->Checkin("nothing changed");
  EXPECT_EQ(bench.Sh("remote.git", "git log --format=%s main"), "why\ntheirs\n");
  EXPECT_EQ(bench.Work("git status --porcelain"), "A  other.txt\n");
  bench.Work("git commit -qm own; echo again >top.txt");
  ExpectWords(ErrorOf([&] { file->Checkin("why"); }), "push them first");
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
  const auto calls = bench.Calls();
  for (const std::string label :
       {"", "-d", "--force", "a..b", "a b", "a\nb", "v:w", "*", "HEAD", "v.lock"}) {
    ExpectWords(ErrorOf([&] { top->Label(label, "c"); }), "not a valid tag name");
  }
  EXPECT_LE(bench.Calls() - calls, 10) << "the server is not asked";
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
  EXPECT_LE(bench.Calls() - calls, 13);
  snapshot.reset();
  bench.Publish("p9/f9", "changed");
  EXPECT_TRUE(bench.client.VSSItem("$/p9/f9")->IsDifferent());

  bench.Locally("p9/f9", "mine");
  snapshot = bench.client.Snapshot();
  const auto words = bench.GetError();
  ExpectWords(words, "\tp9/f9");
  const auto first = bench.Calls();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(bench.GetError(), words);
  EXPECT_EQ(bench.Calls(), first);
}

}  // namespace
}  // namespace gorbex::test
