#include "compiler/project.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "compiler/windows_path.h"
#include "platform/code_page.h"
#include "platform/header_fields.h"
#include "platform/plain_text.h"
#include "platform/windows_path.h"

namespace gorbex::standin {
namespace {

struct TypeRule {
  std::string_view name;
  ProjectType type;
  std::string_view extension;
};

constexpr std::array kTypes = {
    TypeRule{"Exe", ProjectType::Exe, ".exe"},
    TypeRule{"OleDll", ProjectType::OleDll, ".dll"},
    TypeRule{"OleExe", ProjectType::OleExe, ".exe"},
    TypeRule{"Control", ProjectType::Control, ".ocx"},
};

struct ItemRule {
  std::string_view key;
  ProjectItem::Kind kind;
};

constexpr std::array kItems = {
    ItemRule{"Class", ProjectItem::Kind::Class},
    ItemRule{"Designer", ProjectItem::Kind::Source},
    ItemRule{"Form", ProjectItem::Kind::Source},
    ItemRule{"Module", ProjectItem::Kind::Source},
    ItemRule{"Object", ProjectItem::Kind::Object},
    ItemRule{"PropertyPage", ProjectItem::Kind::Source},
    ItemRule{"Reference", ProjectItem::Kind::Reference},
    ItemRule{"UserControl", ProjectItem::Kind::UserControl},
    ItemRule{"UserDocument", ProjectItem::Kind::Source},
};

struct ValueRule {
  std::string_view key;
  std::string Project::*value;
};

constexpr std::array kValues = {
    ValueRule{"CompatibleEXE32", &Project::compatibleFile},
    ValueRule{"CompatibleMode", &Project::compatibleMode},
    ValueRule{"Description", &Project::description},
    ValueRule{"ExeName32", &Project::exeName},
    ValueRule{"Name", &Project::name},
    ValueRule{"Path32", &Project::outputFolder},
};

// "modMain; modMain.bas" names the file after the module, "Label.ctl" only the file.
ProjectItem SourceItem(ProjectItem::Kind kind, std::string_view value) {
  const auto mark = value.find(';');
  if (mark != std::string_view::npos) {
    return {kind, std::string(Trimmed(value.substr(mark + 1))),
            std::string(Trimmed(value.substr(0, mark)))};
  }
  const auto file = FileNameOf(value);
  return {kind, std::string(value), file.substr(0, file.rfind('.'))};
}

class ProjectReader {
 public:
  explicit ProjectReader(const std::string& path) {
    project_.path = path;
    project_.folder = ResolvedPath(path, "..");
  }

  std::optional<Project> Read(std::string_view text) {
    while (!text.empty()) {
      const auto line = TakeLine(text);
      if (line.starts_with('[')) break;  // sections of add-ins may repeat the keys
      TakePair(line);
    }
    if (type_ == nullptr) return std::nullopt;
    Complete();
    return std::move(project_);
  }

 private:
  void TakePair(std::string_view line) {
    const auto mark = line.find('=');
    if (mark == std::string_view::npos) return;
    const auto key = line.substr(0, mark);
    const auto value = Unquoted(Trimmed(line.substr(mark + 1)));
    if (EqualsIgnoringCase(key, "Type")) TakeType(value);
    for (const auto& rule : kItems) {
      if (EqualsIgnoringCase(key, rule.key)) TakeItem(rule.kind, value);
    }
    for (const auto& rule : kValues) {
      if (EqualsIgnoringCase(key, rule.key)) project_.*rule.value = value;
    }
  }

  void TakeType(std::string_view value) {
    for (const auto& rule : kTypes) {
      if (EqualsIgnoringCase(value, rule.name)) type_ = &rule;
    }
  }

  void TakeItem(ProjectItem::Kind kind, std::string_view value) {
    ProjectItem item{kind, std::string(value), ""};
    project_.items.push_back(item.IsSource() ? SourceItem(kind, value) : item);
  }

  void Complete() {
    project_.type = type_->type;
    if (project_.name.empty()) {
      const auto file = FileNameOf(project_.path);
      project_.name = file.substr(0, file.rfind('.'));
    }
    project_.exeName = FileNameOf(project_.exeName);
    if (project_.exeName.empty()) project_.exeName = project_.name + std::string(type_->extension);
  }

  Project project_;
  const TypeRule* type_ = nullptr;
};

bool HasOverlongValue(const Project& project) {
  constexpr std::size_t kLongest = 2000;
  return std::any_of(kValues.begin(), kValues.end(), [&](const ValueRule& rule) {
    return (project.*rule.value).size() > kLongest;
  });
}

}  // namespace

bool IsPlainText(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\0') return false;
    if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r')) return false;
    if (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n')) return false;
  }
  return true;
}

std::variant<Project, Fault> LoadProject(const FileReader& files, const std::string& path) {
  if (!FileExists(files, path)) return FileNotFound(path);
  const std::string text = files.Read(path);
  if (text.empty()) return CouldNotBeLoaded(path, "the file is empty");
  if (!IsPlainText(text)) return CouldNotBeLoaded(path, "it is not text with CR LF line ends");
  auto project = ProjectReader(path).Read(text);
  if (!project) return CouldNotBeLoaded(path, "it has no known project type");
  if (HasOverlongValue(*project)) return CouldNotBeLoaded(path, "one of its values is too long");
  return *std::move(project);
}

}  // namespace gorbex::standin
