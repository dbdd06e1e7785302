#include "platform/windows/source_control.h"

#include "platform/git/initialisation_file.h"

namespace gorbex {

void WindowsSourceControl::Open(const std::string& iniPath, const std::string& user,
                                const std::string& password) {
  SourceControl* chosen = &sourceSafe_;
  if (ReadGitSettings(files_, iniPath)) chosen = &git_;
  chosen->Open(iniPath, user, password);
  open_ = chosen;
}

}  // namespace gorbex
