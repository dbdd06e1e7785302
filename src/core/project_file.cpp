#include "core/project_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/file_tools.h"
#include "core/pair_reader.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

class ProjectFileParser {
 public:
  explicit ProjectFileParser(const std::string& path) : folder_(StripPath(path)) {
    file_.member.path = path;
  }

  ProjectFile Parse(std::string_view text) {
    PairReader pairs(text);
    for (;;) {
      const auto pair = pairs.Next();
      if (!pair.has_value()) break;
      Take(pair->key, WithoutQuotes(pair->value));
    }
    file_.member.Version = major_ + "." + minor_ + "." + revision_;
    return std::move(file_);
  }

 private:
  using Handler = void (ProjectFileParser::*)(std::string&& value);
  using Row = std::pair<std::string_view, Handler>;

  void Take(std::string_view key, std::string&& value) {
    using P = ProjectFileParser;
    // "revision" and not "revisionver": the compiler's own key is shown as a property.
    static constexpr std::array<Row, 14> kKeys = {{
        {"type", &P::TakeType},
        {"reference", &P::TakeReference},
        {"object", &P::TakeObject},
        {"compatibleexe32", &P::TakeCompatibility},
        {"module", &P::TakeMember},
        {"form", &P::TakeMember},
        {"usercontrol", &P::TakeUserControl},
        {"class", &P::TakeUserControl},
        {"name", &P::TakeName},
        {"exename32", &P::TakeExeName},
        {"path32", &P::TakeOutputFolder},
        {"majorver", &P::TakeMajor},
        {"minorver", &P::TakeMinor},
        {"revision", &P::TakeRevision},
    }};
    const auto* row = std::ranges::find_if(
        kKeys, [&](const Row& candidate) { return EqualsIgnoringCase(candidate.first, key); });
    if (row != kKeys.end()) {
      (this->*row->second)(std::move(value));
      return;
    }
    if (EqualsIgnoringCase(key, "compatiblemode")) file_.member.BinaryCompat = value == "2";
    file_.properties.push_back(std::string(key) + "=" + value);
  }

  // "Module=modMain; modMain.bas" and "Form=frmMain.frm" both name a file in the project's folder.
  [[nodiscard]] std::string SourcePath(std::string_view value) const {
    const auto separator = value.find(';');
    if (separator != std::string_view::npos) value = TrimBlanks(value.substr(separator + 1));
    return folder_ + "\\" + std::string(value);
  }

  void TakeType(std::string&& value) { file_.member.MemberType = std::move(value); }
  void TakeReference(std::string&& value) { file_.member.Refs.push_back(std::move(value)); }
  void TakeObject(std::string&& value) { file_.member.Objects.push_back(std::move(value)); }
  void TakeCompatibility(std::string&& value) { file_.member.Compatibility = std::move(value); }
  void TakeMember(std::string&& value) { file_.member.Members.push_back(SourcePath(value)); }
  void TakeUserControl(std::string&& value) {
    file_.member.UserControls.push_back(GetFileFromPath(SourcePath(value)));
  }
  void TakeName(std::string&& value) { file_.member.Name = std::move(value); }
  void TakeExeName(std::string&& value) { file_.member.EXEName = std::move(value); }
  void TakeOutputFolder(std::string&& value) {
    file_.member.BuildName = value + "\\" + file_.member.EXEName;
  }
  void TakeMajor(std::string&& value) { major_ = std::move(value); }
  void TakeMinor(std::string&& value) { minor_ = std::move(value); }
  void TakeRevision(std::string&& value) { revision_ = std::move(value); }

  std::string folder_;
  ProjectFile file_;
  std::string major_;
  std::string minor_;
  std::string revision_;
};

}  // namespace

ProjectFile ParseProjectFile(const std::string& path, std::string_view text) {
  return ProjectFileParser(path).Parse(text);
}

std::string BoundProject(std::string_view bindingText) {
  constexpr std::string_view kMarker = "SCC_Project_Name = ";
  const auto marker = bindingText.find(kMarker);
  if (marker == std::string_view::npos) return {};
  const auto value = bindingText.substr(marker + kMarker.size());
  return WithoutQuotes(value.substr(0, value.find(',')));
}

std::optional<std::string> LineEndProblem(std::string_view text) {
  const bool hasLineFeed = text.find('\n') != std::string_view::npos;
  const bool hasReturn = text.find('\r') != std::string_view::npos;
  if (hasLineFeed == hasReturn) return std::nullopt;
  return hasLineFeed ? "its lines end with LF only" : "its lines end with CR only";
}

std::optional<std::string> ByteOrderMarkProblem(std::string_view text) {
  if (!text.starts_with("\xEF\xBB\xBF")) return std::nullopt;
  return "it begins with a UTF-8 byte order mark";
}

std::optional<std::string> ProjectFileProblem(std::string_view text) {
  if (text.empty()) return "the file is empty";
  if (text.find_first_not_of('\0') == std::string_view::npos) {
    return "the file holds nothing but zero bytes";
  }
  if (auto problem = LineEndProblem(text)) return *problem + "; the compiler wants CR LF";
  if (auto problem = ByteOrderMarkProblem(text)) return *problem + "; the compiler wants none";
  if (text.find('=') == std::string_view::npos) {
    return "it is not a project file: no key=value line";
  }
  return std::nullopt;
}

}  // namespace gorbex
