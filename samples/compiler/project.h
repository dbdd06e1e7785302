#pragma once

#include <string>
#include <variant>
#include <vector>

#include "compiler/result_log.h"
#include "platform/file_system.h"

namespace gorbex::standin {

enum class ProjectType { Exe, OleDll, OleExe, Control };

/// A line that names something the project is made of.
struct ProjectItem {
  enum class Kind { Reference, Object, Source, Class, UserControl };
  Kind kind = Kind::Source;
  std::string value;  ///< of a source: only the file
  std::string name;   ///< of a source: as the line has it, else that of the file

  [[nodiscard]] bool IsSource() const { return kind != Kind::Reference && kind != Kind::Object; }
};

struct Project {
  ProjectType type = ProjectType::Exe;
  std::string path;
  std::string folder;
  std::string name;
  std::string description;
  std::string exeName;  ///< the name of the binary, derived where the file gives none
  std::string outputFolder;
  std::string compatibleMode;
  std::string compatibleFile;
  std::vector<ProjectItem> items;  ///< in file order
};

[[nodiscard]] inline bool IsComponent(ProjectType type) {
  return type != ProjectType::Exe;
}

/// True when every line ends with CR LF and the text has no zero byte.
[[nodiscard]] bool IsPlainText(std::string_view bytes);

[[nodiscard]] std::variant<Project, Fault> LoadProject(const FileReader& files,
                                                       const std::string& path);

}  // namespace gorbex::standin
