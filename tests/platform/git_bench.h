#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/git/source_control.h"
#include "platform/linux/child_process.h"
#include "system_bench.h"

namespace gorbex::test {

/// A bare remote, the working copy C:\Work and that of somebody else, with the git that the program
/// finds noting down every call.
class GitBench {
 public:
  TemporaryFolder root;
  Variable home{"HOME", (root.Path() / "home").native()};
  Variable noSystem{"GIT_CONFIG_NOSYSTEM", "1"};
  Variable path{"PATH", (root.Path() / "bin").native() + ":" + std::getenv("PATH")};
  Prefix prefix{root.Path() / "prefix"};
  LinuxFileSystem files{prefix};
  LinuxToolRunner tools{prefix};
  GitSourceControl client{tools, files, GORBEX, [this](const std::string& hostPath) {
                            return prefix.WindowsPath(hostPath);
                          }};
  std::string work = "C:\\Work";
  std::string user;
  std::string password;

  GitBench() {
    files.Write("C:\\scc.ini", "; where\r\n[Git]\r\nworktree = Work\r\n");
    root.Put("home/.gitconfig",
             "[user]\nname=Tester\nemail=t@example\n[gc]\nauto=0\n[init]\ndefaultBranch=main\n");
    root.Put("bin/git", "#!/bin/sh\necho \"call $*\" >>" + (root.Path() / "calls").native() +
                            "\nexec " + *FindOnHost("git") + " \"$@\"\n");
    Sh("",
       "chmod +x bin/git; git init -q --bare remote.git; git clone -q remote.git other 2>&1;"
       "git -C remote.git config http.receivepack true");
    Publish("top.txt", "top\n");
    Sh("", "git clone -q remote.git prefix/drive_c/Work");
  }

  /// What a script says in a folder of the bench.
  std::string Sh(const std::string& folder, const std::string& script) {
    const auto outcome =
        tools.Run({"sh", {"-ec", script}, prefix.WindowsPath(root.Path() / folder)});
    const auto& result = std::get<ToolResult>(outcome);
    EXPECT_EQ(result.exitCode, 0U) << script << ": " << result.errorOutput;
    return result.output;
  }
  std::string Work(const std::string& script) { return Sh("prefix/drive_c/Work", script); }

  void Open() { client.Open("C:\\scc.ini", user, password); }
  void Publish(const std::string& name, const std::string& text) {
    root.Put("other/" + name, text);
    Sh("other", "git add -A; git commit -qm theirs; git push -q origin HEAD:main");
  }
  void Locally(const std::string& name, const std::optional<std::string>& text) {
    if (!text) Work("rm '" + name + "'");
    if (text) root.Put(Place(name), *text);
  }
  std::string Local(const std::string& name) { return root.Get(Place(name)); }
  std::string Database(const std::string& name) {
    return Sh("remote.git", "git show 'main:" + name + "'");
  }
  bool HasLabel(const std::string& label) { return Sh("remote.git", "git tag") == label + "\n"; }
  int Calls() { return std::stoi(Sh("", "grep -c '^call' calls")); }

  std::string OpenError() {
    return ErrorOf([&] { Open(); });
  }
  std::string GetError() {
    return ErrorOf([&] { client.VSSItem("$/")->Get("C:\\Work", 0x4022000); });
  }

 private:
  static std::string Place(const std::string& name) { return "prefix/drive_c/Work/" + name; }
};

/// The same remote on a server that wants a user and a password.
class GitOverHttp : public GitBench {
 public:
  GitOverHttp() {
    user = "anna";
    password = "s3cr\xE9t w%rd";
    Sh("", "for i in $(seq 500); do [ -s port ] || sleep 0.02; done");
    Work("git remote set-url origin http://127.0.0.1:" + root.Get("port") + "/remote.git");
  }
  ~GitOverHttp() { server_.Terminate(); }

 private:
  ChildProcess server_{{{*FindOnHost("python3"), GIT_SERVER, root.Path().native(),
                         (root.Path() / "port").native(), "anna", "s3cr\u00E9t w%rd"},
                        EnvironmentWith({})}};
};

inline void ExpectWords(const std::string& error, const std::string& words) {
  EXPECT_NE(error.find(words), std::string::npos) << "no \"" << words << "\" in: " << error;
}

}  // namespace gorbex::test
