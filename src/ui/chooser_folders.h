#pragma once

#include <map>
#include <string>

namespace gorbex::ui {

/// The folders in which the choosers of files and folders open: first that of the open build
/// project, later the one in which the chooser was used last. Paths are the host's, in UTF-8.
class ChooserFolders {
 public:
  /// The folder for a chooser, known by its title; empty when there is none. `project` is the
  /// folder of the open build project; when it is another one than before, all choosers begin there
  /// again.
  [[nodiscard]] std::string Begin(const std::string& chooser, const std::string& project);

  /// Where something was chosen.
  void Remember(const std::string& chooser, const std::string& folder);

 private:
  std::string project_;
  std::string last_;  ///< of any chooser, for those that begin with no build project open
  std::map<std::string, std::string> folders_;
};

}  // namespace gorbex::ui
