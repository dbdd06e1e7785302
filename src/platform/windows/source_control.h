#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/file_system.h"
#include "platform/git/initialisation_file.h"
#include "platform/git/source_control.h"
#include "platform/tool.h"
#include "platform/windows/source_safe.h"

namespace gorbex {

/// The source-control clients of Windows. The initialisation file chooses: one with a [git] section
/// names a git working tree, any other one a SourceSafe database.
class WindowsSourceControl : public SourceControl {
 public:
  /// The ask-pass program is this program: its main calls AnswerAskPass.
  WindowsSourceControl(ToolRunner& tools, FileSystem& files, std::string askPassProgram)
      : files_(files), git_(tools, files, std::move(askPassProgram)) {}

  /// From now on these events are handled while SourceSafe works; the pump outlives this object.
  void Handle(EventPump& events) { sourceSafe_.Handle(events); }

  void Open(const std::string& iniPath, const std::string& user,
            const std::string& password) override {
    SourceControl* chosen = &sourceSafe_;
    if (ReadGitSettings(files_, iniPath)) chosen = &git_;
    chosen->Open(iniPath, user, password);
    open_ = chosen;
  }
  [[nodiscard]] bool KnowsUsers(const std::string& iniPath) const override {
    return git_.KnowsUsers(iniPath);
  }
  [[nodiscard]] std::string UserName() const override { return open_->UserName(); }
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override {
    return open_->VSSItem(spec);
  }
  [[nodiscard]] std::shared_ptr<void> Snapshot() override { return open_->Snapshot(); }

 private:
  const FileReader& files_;
  GitSourceControl git_;
  SourceSafe sourceSafe_;
  SourceControl* open_ = &sourceSafe_;  ///< the client that was opened last; any, before
};

}  // namespace gorbex
