#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/file_system.h"
#include "platform/git/initialisation_file.h"
#include "platform/git/working_tree.h"
#include "platform/source_control.h"
#include "platform/tool.h"

namespace gorbex {

/// Git as a source-control database, through the `git` program, so that the
/// user's credentials, hooks and settings work as always. The initialisation file names the working
/// tree in a [git] section; "$/" is its top.
class GitSourceControl : public SourceControl {
 public:
  /// The ask-pass program is this program: its main calls AnswerAskPass.
  GitSourceControl(ToolRunner& tools, FileSystem& files, std::string askPassProgram,
                   HostPathReader hostPath = {})
      : tools_(tools),
        files_(files),
        askPassProgram_(std::move(askPassProgram)),
        hostPath_(std::move(hostPath)) {}

  void Open(const std::string& iniPath, const std::string& user,
            const std::string& password) override;
  [[nodiscard]] bool KnowsUsers(const std::string& iniPath) const override;
  [[nodiscard]] std::string UserName() const override { return user_; }
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override;
  [[nodiscard]] std::shared_ptr<void> Snapshot() override;

 private:
  ToolRunner& tools_;
  FileSystem& files_;
  std::string askPassProgram_;
  HostPathReader hostPath_;
  std::string user_;
  std::shared_ptr<GitWorkingTree> tree_;  ///< null while not open
};

}  // namespace gorbex
