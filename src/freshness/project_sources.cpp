#include "freshness/project_sources.h"

#include <algorithm>
#include <utility>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

constexpr std::array<std::string_view, 2> kDebugKeys = {"OptimizationType", "CodeViewDebugInfo"};
constexpr std::array<std::string_view, 2> kDebugValues = {"2", "-1"};

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> names) {
  return std::ranges::any_of(names, [&](auto name) { return EqualsIgnoringCase(name, text); });
}

std::string Extension(std::string_view file) {
  const auto dot = file.rfind('.');
  return dot == std::string_view::npos ? std::string() : LowerCase(file.substr(dot));
}

// Where the compiler keeps the pictures and other binary parts of a source.
constexpr std::array<std::array<std::string_view, 2>, 6> kCompanions = {{{".frm", ".frx"},
                                                                         {".ctl", ".ctx"},
                                                                         {".pag", ".pgx"},
                                                                         {".dob", ".dox"},
                                                                         {".dsr", ".dsx"},
                                                                         {".dsr", ".dca"}}};

std::string DerivedExtension(const std::string& type) {
  if (EqualsIgnoringCase(type, "OleDll")) return ".dll";
  return EqualsIgnoringCase(type, "Control") ? ".ocx" : ".exe";
}

// A binary that is not named has the project's name, or else the project file's.
std::string BinaryName(const clsMember& project) {
  if (!project.EXEName.empty()) return GetFileFromPath(project.EXEName);
  const std::string file = GetFileFromPath(project.path);
  const std::string name = project.Name.empty() ? file.substr(0, file.rfind('.')) : project.Name;
  return name + DerivedExtension(project.MemberType);
}

/// Goes through the lines of a project file.
class SourceReader {
 public:
  ProjectSources Read(std::string_view text) {
    for (std::string_view line : Split(text, '\n')) {
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (TrimBlanks(line).empty()) continue;
      if (line.starts_with('[')) inSection_ = true;
      if (inSection_ || !TakeLine(line)) Keep(line);
    }
    if (!increments_) Keep(revisionLine_);
    found_.text = HashOf(kept_);
    if (compatibleMode_ == "2") found_.compatibleBinary = compatibleFile_;
    found_.version = major_ + "." + minor_ + "." + revision_;
    return std::move(found_);
  }

 private:
  void Keep(std::string_view line) { kept_.append(line).append("\n"); }

  // Sections of add-ins may repeat the keys. True for a line that is not a part of the kept text.
  bool TakeLine(std::string_view line) {
    const auto mark = line.find('=');
    if (mark == std::string_view::npos) return false;
    const auto key = TrimBlanks(line.substr(0, mark));
    const std::string value = WithoutQuotes(TrimBlanks(line.substr(mark + 1)));
    for (std::size_t i = 0; i < kDebugKeys.size(); ++i) {
      if (!EqualsIgnoringCase(key, kDebugKeys[i])) continue;
      found_.debug[i] = value;
      return true;
    }
    if (EqualsIgnoringCase(key, "RevisionVer")) {
      revision_ = value;
      revisionLine_ = line;
      return true;
    }
    TakeValue(key, value);
    return false;
  }

  void TakeValue(std::string_view key, const std::string& value) {
    if (IsOneOf(key, {"Form", "Module", "Class", "UserControl", "PropertyPage", "UserDocument",
                      "Designer"})) {
      const auto mark = value.find(';');
      TakeMember(mark == std::string::npos ? value
                                           : TrimBlanks(std::string_view(value).substr(mark + 1)));
    } else if (IsOneOf(key, {"Reference", "Object"})) {
      found_.references.push_back(value);
    } else if (EqualsIgnoringCase(key, "ResFile32") && !value.empty()) {
      found_.members.push_back(value);
    }
    TakeText(key, value);
  }

  void TakeText(std::string_view key, const std::string& value) {
    using Row = std::pair<std::string_view, std::string SourceReader::*>;
    static constexpr std::array<Row, 4> kTexts = {
        {{"CompatibleMode", &SourceReader::compatibleMode_},
         {"CompatibleEXE32", &SourceReader::compatibleFile_},
         {"MajorVer", &SourceReader::major_},
         {"MinorVer", &SourceReader::minor_}}};
    for (const auto& [name, text] : kTexts) {
      if (EqualsIgnoringCase(key, name)) this->*text = value;
    }
    if (EqualsIgnoringCase(key, "AutoIncrementVer")) increments_ = value == "1";
  }

  void TakeMember(std::string_view file) {
    found_.members.emplace_back(file);
    const std::string extension = Extension(file);
    const std::string stem(file.substr(0, file.size() - extension.size()));
    for (const auto& [source, companion] : kCompanions) {
      if (source == extension) found_.companions.push_back(stem + std::string(companion));
    }
  }

  ProjectSources found_;
  std::string kept_;
  std::string compatibleMode_;
  std::string compatibleFile_;
  std::string major_ = "1";
  std::string minor_ = "0";
  std::string revision_ = "0";
  std::string_view revisionLine_;
  bool increments_ = false;
  bool inSection_ = false;
};

}  // namespace

ProjectSources ReadSources(std::string_view projectText) {
  return SourceReader().Read(projectText);
}

DebugTexts WithDebug(const DebugTexts& own) {
  DebugTexts wanted;
  for (std::size_t i = 0; i < own.size(); ++i) {
    if (!own[i].empty()) wanted[i] = kDebugValues[i];
  }
  return wanted;
}

std::string BuiltFile(const clsMember& project, const std::string& folder) {
  const std::string own = folder.empty() ? StripPath(OwnBinary(project)) : folder;
  return ResolvedPath(StripPath(project.path), JoinPath(own, BinaryName(project)));
}

}  // namespace gorbex
