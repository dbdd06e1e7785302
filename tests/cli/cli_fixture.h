#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/cli.h"
#include "tests/support/group_builder.h"
#include "tests/support/memory_platform.h"

namespace gorbex::test {

/// Runs the command line in this process over a memory platform, on a group in which Till uses
/// Money and both use Core. Typed paths are Windows paths.
class CliFixture : public ::testing::Test {
 protected:
  CliFixture() {
    group.Library("Core").Line("CompatibleMode=\"2\"");
    group.Library("Money").Uses("Core").Line("CompatibleMode=\"2\"");
    group.Executable("Till").Uses("Money").Uses("Core").Line("CompatibleMode=\"2\"");
    file = group.BuildProject({"breakcompat=False"});
  }

  struct Result {
    int status = -1;
    std::string out;
    std::string err;
    [[nodiscard]] nlohmann::json Json() const { return nlohmann::json::parse(out); }
  };

  Result Run(const std::vector<std::string>& arguments, const std::string& typed = "",
             bool asks = false) {
    std::istringstream in(typed);
    std::ostringstream out;
    std::ostringstream err;
    cli::Streams streams{in, out, err, asks, animates, movesCursor};
    streams.ci = ci;
    streams.colours = colours;
    const int status = cli::RunCli(
        arguments, streams, [this](const auto&) { return std::make_unique<MemoryHost>(platform); });
    return {status, out.str(), err.str()};
  }

  /// A compiler that writes a result log for every project it is given; those named fail.
  void InstallCompiler(const std::vector<std::string>& failing = {}) {
    platform.registry.AddText(RegistryRoot::ClassesRoot,
                              "VisualBasic.Project\\shell\\open\\command", "",
                              "\"C:\\VB\\VB6.EXE\" \"%1\"");
    platform.files.AddFile("C:\\VB\\VB6.EXE", "compiler");
    platform.processes.otherwise = [this, failing](const std::string& commandLine) {
      const bool fails = std::any_of(failing.begin(), failing.end(), [&](const auto& name) {
        return commandLine.find("\\" + name + ".vbp") != std::string::npos;
      });
      platform.files.AddFile(platform.programFolder + "\\VBResult.log",
                             fails ? "\r\nCompile Error in File 'C:\\x.bas', Line 4 : Syntax "
                                     "<error>\r\nBuild of 'x' failed."
                                   : "\r\nBuild of 'x' succeeded.");
      return fails ? 1U : 0U;
    };
  }

  static constexpr const char* kIni = "C:\\scc.ini";

  bool animates = false;
  bool colours = false;
  cli::CiSystem ci = cli::CiSystem::None;
  bool movesCursor = false;
  MemoryPlatform platform;
  Group group{platform};
  std::string file;  ///< the group's build project

 private:
  class MemoryHost : public Host {
   public:
    explicit MemoryHost(MemoryPlatform& memory) : memory_(memory) {}
    PlatformServices Services(EventPump& events) override {
      const PlatformServices all = memory_.Services();
      return {all.files, all.registry,      all.processes,     all.clock,
              events,    all.components,    all.objects,       all.sourceControl,
              all.mail,  all.programFolder, all.keepOthersOut, all.registrationAdvice};
    }
    [[nodiscard]] std::string TypedPath(const std::string& typed) const override { return typed; }
    [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& path) const override {
      return path;
    }
    [[nodiscard]] bool EndWanted() const override { return waits_ > 2; }
    void Wait(std::chrono::milliseconds time) override {
      memory_.journal.push_back("wait " + std::to_string(time.count()));
      ++waits_;
    }

   private:
    MemoryPlatform& memory_;
    int waits_ = 0;  ///< the third is broken by the wish to end
  };
};

}  // namespace gorbex::test
