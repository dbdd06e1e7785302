#include "tests/platform/git_bench.h"

namespace gorbex::test {
namespace {

TEST(GitGet, LosesNothingWhenAGetFails) {
  struct Case {
    std::string script, words;
  };
  const std::string smudge =
      ";echo mine >own; git config filter.no.smudge false; git config filter.no.required true;"
      "echo 'z.bin filter=no' >.git/info/attributes";
  const std::string unborn = "git update-ref -d HEAD; git rm -rq --cached .; rm -r App; ";
  const std::string hook = "mkdir -p .git/hooks; cd .git/hooks; printf '#!/bin/sh\n";
  const Case cases[] = {
      {"echo mine >top.txt", "\ttop.txt"},
      {"echo mine >z.bin", "\tz.bin"},
      {"echo mine >z.bin; echo '*.bin' >.git/info/exclude", "\tz.bin"},
      {"echo mine >own; git add own; git commit -qm own", "Not possible to fast-forward"},
      {":" + smudge, "smudge filter no failed"},
      {"echo a >.git/info/exclude" + smudge, "smudge filter no failed"},
      {unborn + "echo mine >top.txt; echo '*.txt' >.git/info/exclude", "\ttop.txt"},
      {unborn + "rm top.txt; echo '*.txt' >.git/info/exclude" + smudge, "smudge filter no failed"},
      {hook + "git reset -q --hard ORIG_HEAD' >post-merge; chmod +x *", "not brought up to date"},
      {hook + "! grep -q refs/heads/main' >reference-transaction; chmod +x *", "aborted by hook"},
      {"git commit -q --allow-empty -m own; GIT_SEQUENCE_EDITOR='sed -i s/pick/edit/' git rebase "
       "-qi HEAD~1 2>&1",
       "A rebase is under way in 'C:\\Work'"},
      {"git checkout -q --orphan side; git commit -qm own; git checkout -q main; git merge -q "
       "--no-commit -s ours --allow-unrelated-histories side",
       "A merge is under way"},
      {"git bisect start", "A bisection is under way"},
      {"echo mine >own; git checkout -qb side", "is 'side', not 'main'"},
      {"rm -r App; mkdir own; echo mine >own/x; ln -s own App",
       "'App' in the working copy is a link"},
      {"rm -r App; echo mine >App; echo App >.git/info/exclude", "'App' in the working copy is a"}};
  const std::string state =
      "git rev-parse HEAD || :; git status --porcelain --ignored; "
      "for f in *; do test -d $f || cat $f; done; ls -F; ls .git/*.lock "
      "|| :";
  for (const Case& c : cases) {
    GitBench bench;
    bench.Publish("App/x", "x");
    bench.Work("git pull -q");
    bench.Open();
    bench.Work(c.script + "; git config merge.autoStash true");
    const auto before = bench.Work(state);
    bench.Publish("a/new.txt", "new");
    bench.Publish("top.txt", "newer\n");
    bench.Publish("App/x", "newer");
    bench.Publish("z.bin", "z");
    ExpectWords(bench.GetError(), c.words);
    EXPECT_EQ(bench.Work(state), before) << c.script;
    ExpectWords(bench.GetError(), c.words);
  }
}

TEST(GitGet, GoesOnWhereAFailedGetStopped) {
  GitBench bench;
  bench.Publish("z.bin", "old");
  bench.Open();
  EXPECT_EQ(bench.GetError(), "<none>");
  bench.Work(
      "git config filter.no.clean cat; git config filter.no.smudge false;"
      "git config filter.no.required true;"
      "echo 'z.bin filter=no' >.git/info/attributes");
  bench.Publish("top.txt", "newer\n");
  bench.Publish("z.bin", "new");
  ExpectWords(bench.GetError(), "smudge filter no failed");
  EXPECT_EQ(bench.Work("git status --porcelain"), " D z.bin\n");
  bench.Work(
      "rm .git/info/attributes; echo mine >.git/index.lock;"
      "echo mine >.git/refs/remotes/origin/main.lock;"
      "(sleep 0.3; rm .git/refs/remotes/origin/*.lock; sleep 0.5; rm .git/index.lock) &");
  EXPECT_EQ(bench.GetError(), "<none>");
  EXPECT_EQ(bench.Work("git status --porcelain; cat *"), "newer\nnew");
}

TEST(GitGet, PutsBackWhatAGetStoppedLateRemoved) {
  const std::string hook =
      "printf '#!/bin/sh\n! grep -q refs/heads/main' >.git/hooks/reference-transaction;"
      "chmod +x .git/hooks/*";
  struct Case {
    std::string trouble, theirs, words;
  };
  const std::string many =
      "for i in $(seq 200); do echo new >m$i; echo a >a$i; done; rm d?*[0-9]; git mv top.txt moved";
  const Case cases[] = {
      {hook, "git rm -q top.txt", "aborted by hook"},
      {hook, "git mv top.txt moved.txt", "aborted by hook"},
      {hook, "git rm -q top.txt; mkdir top.txt; echo x >top.txt/x", "aborted by hook"},
      {hook, "git rm -q dir/x; echo x >dir.txt; git rm -q d1; mkdir d1; echo x >d1/x", "by hook"},
      {":>.git/HEAD.lock", many, "HEAD.lock': File exists"},
      {hook, many, "aborted by hook"}};
  for (const Case& c : cases) {
    GitBench bench;
    bench.Sh("other",
             "mkdir dir; echo x >dir/x; for i in $(seq 200); do echo old >m$i; done;"
             "for i in $(seq 100); do echo old >d$i; done");
    bench.Publish("z", "z");
    bench.Work("git pull -q; mkdir -p .git/hooks; " + c.trouble);
    bench.Locally("z", "mine");
    bench.Sh("other", c.theirs);
    bench.Publish("new", "new");
    bench.Open();
    ExpectWords(bench.GetError(), c.words);
    EXPECT_EQ(bench.Work("git status --porcelain; cat top.txt"), " M z\ntop\n") << c.theirs;
    bench.Work("rm -f .git/hooks/* .git/HEAD.lock");
    EXPECT_EQ(bench.GetError(), "<none>") << c.theirs;
  }
}

TEST(GitGet, LeavesSubmodulesToTheUserAndSaysSo) {
  GitBench bench;
  bench.Sh("",
           "git init -q part; cd part; mkdir App; echo x >App/x; git add -A; git commit -qm x;"
           "cd ../other; git -c protocol.file.allow=always submodule --quiet add ../part Part");
  bench.Publish("App/x", "x");
  bench.Open();
  const auto get = [&] { return bench.client.VSSItem("$/")->Get("C:\\Work", 0x4022000); };
  ExpectWords(get(),
              "moved the submodule 'Part', whose files git leaves as they are: run 'git "
              "submodule update --init' in 'C:\\Work'");
  bench.Work("git -c protocol.file.allow=always submodule --quiet update --init");
  EXPECT_EQ(get(), "") << "nothing has moved";
  bench.Publish("App/x", "newer");
  EXPECT_EQ(get(), "");
  for (const std::string spec : {"$/Part", "$/part/App", "$/Part/App/x"}) {
    const auto item = bench.client.VSSItem(spec);
    ASSERT_TRUE(item) << spec;
    const auto words = " is in the submodule 'Part', a separate repository";
    ExpectWords(ErrorOf([&] { item->Get(item->LocalSpec(), 0); }), words);
    if (spec.ends_with('x')) continue;
    ExpectWords(ErrorOf([&] { static_cast<void>(item->Items()); }), words);
    const auto snapshot = bench.client.Snapshot();
    ExpectWords(ErrorOf([&] { static_cast<void>(item->Items()); }), words);
  }
  bench.Sh("part", "git commit -q --allow-empty -m next; git -C ../other/Part pull -q");
  bench.Publish("z", "z");
  ExpectWords(get(), "moved the submodule 'Part'");
}

}  // namespace
}  // namespace gorbex::test
