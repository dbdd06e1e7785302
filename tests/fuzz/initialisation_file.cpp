#include "platform/git/initialisation_file.h"

#include "core/text.h"
#include "platform/runtime_error.h"
#include "tests/fuzz/target.h"
#include "tests/support/memory_file_system.h"

namespace gorbex::test {
namespace {

const std::string kPath = "C:\\Group\\srcsafe.ini";

std::optional<GitSettings> SettingsIn(const std::string& text) {
  Journal journal;
  MemoryFileSystem files(journal);
  files.AddFile(kPath, text);
  try {
    return ReadGitSettings(files, kPath);
  } catch (const RuntimeError& error) {
    Require(error.Code() == ErrorNumber::InvalidCall, "a file without sense is error 5");
    return std::nullopt;
  }
}

}  // namespace

// The file that says where source control is.
void ReadInput(std::string_view input) {
  const auto settings = SettingsIn(std::string(input));
  if (!settings) return;
  Require(!settings->worktree.empty() && !settings->remote.empty(), "settings are whole");
  for (const auto name : Split(settings->worktree, '\\')) {
    Require(name != "." && name != "..", "the working tree's path is resolved");
  }
  const auto again = SettingsIn("[git]\nworktree=" + settings->worktree + "x\n");
  Require(again && again->worktree == settings->worktree + "x", "a path that was written is read");
  const auto root = RootOf(settings->worktree);
  if (root.ends_with('\\')) return;  // a share of no server
  const auto climbed = SettingsIn("[git]\nworktree=" + Climbing(settings->worktree, "x") + "\n");
  Require(climbed && climbed->worktree == root + "\\x", "no path leaves its drive or share");
}

}  // namespace gorbex::test
