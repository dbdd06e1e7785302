#pragma once

#include <string>
#include <vector>

#include "core/main_window.h"

namespace gorbex {

/// A component that projects reference, but that is not registered in that version or whose file
/// does not exist.
struct MissingComponent {
  struct Use {
    std::string project;    ///< the path of its file
    std::string reference;  ///< the value of the line that names the component
  };

  std::string name;     ///< its description; the name of its file or its GUID where there is none
  std::string guid;     ///< with braces; empty when the line has none
  std::string version;  ///< as the line has it
  std::string file;     ///< as the first project names it
  std::string verdict;
  std::vector<Use> uses;  ///< one for each project, in the order of the tree
};

/// The missing components of all projects, those of most projects first. They are read off the
/// marks of the tree: neither registry nor disk is asked again.
[[nodiscard]] std::vector<MissingComponent> MissingComponents(const frmBuilder& window);

/// "2 components missing", for a status bar.
[[nodiscard]] std::string MissingText(std::size_t components);

}  // namespace gorbex
