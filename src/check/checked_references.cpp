#include "check/checked_references.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "check/checked_group.h"
#include "core/file_tools.h"
#include "core/reference_value.h"
#include "core/text.h"
#include "freshness/component_lead.h"
#include "platform/code_page.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

using State = CheckedReference::State;

// "C:\Bin\Core.dll\3" names the third library in the file.
std::string_view WithoutLibraryNumber(std::string_view path) {
  const auto last = path.rfind('\\');
  if (last == std::string_view::npos || last + 1 == path.size()) return path;
  const auto number = path.substr(last + 1);
  return std::ranges::all_of(number, IsDigit) ? path.substr(0, last) : path;
}

std::string_view ComponentFileOf(std::string_view value) {
  try {
    return WithoutLibraryNumber(ComponentPath(value));
  } catch (const RuntimeError&) {
    return {};
  }
}

std::string NameOf(std::string_view value, std::string_view file) {
  std::string name = GetFileFromPath(file);
  if (name.find('.') == std::string::npos) name = ReferenceTitle(value);
  const auto fields = Split(value, '#');
  const auto guid = GetGUID(value);
  if (!guid.empty()) name.append(name.empty() ? "" : " ").append(guid);
  if (fields.size() > 1) name.append(" ").append(fields[1]);
  return name;
}

/// Asks the registry about one component.
class Registration {
 public:
  Registration(const CheckedGroup::Uses& uses, DiskNames& disk) : uses_(uses), disk_(disk) {}

  void Judge(CheckedReference& reference, const std::string& libraryKey, bool isControl) {
    std::string file = RegisteredFile(uses_.registry, libraryKey);
    if (file.empty() && MeansAnyVersion(libraryKey)) return;
    if (file.empty() && !isControl) file = InLaterVersion(libraryKey);
    if (file.empty()) {
      reference.state = Has64Bit(libraryKey) ? State::Only64Bit : State::Unregistered;
      return;
    }
    reference.registered = WithoutLibraryNumber(file);
    // A name with a variable, or without a folder, is for the system to find.
    reference.isFileKnown = reference.registered.find('\\') != std::string::npos &&
                            reference.registered.find('%') == std::string::npos;
    if (!reference.isFileKnown) return;
    const DiskNames::Entry* entry = disk_.Find(reference.registered);
    if (entry == nullptr || entry->isFolder) reference.state = State::FileMissing;
  }

 private:
  // As the system does for libraries: a later minor version serves as well. For controls the
  // compiler asks, which nobody would answer.
  [[nodiscard]] std::string InLaterVersion(const std::string& libraryKey) const {
    constexpr unsigned kTried = 32;
    const auto fields = Split(libraryKey, '#');
    const auto dot = fields[1].find('.');
    if (dot == std::string_view::npos || !IsGuidKnown(fields[0])) return {};
    const auto minor = fields[1].substr(dot + 1);
    unsigned number = 0;
    if (std::from_chars(minor.data(), minor.data() + minor.size(), number, 16).ec != std::errc()) {
      return {};
    }
    for (unsigned next = number + 1; next <= number + kTried; ++next) {
      std::string key(fields[0]);
      key.append("#").append(fields[1].substr(0, dot + 1)).append(Hexadecimal(next));
      std::string file = RegisteredFile(uses_.registry, key.append("#").append(fields[2]));
      if (!file.empty()) return file;
    }
    return {};
  }

  // Version 0.0 serves where it does not matter which one is registered.
  [[nodiscard]] bool MeansAnyVersion(const std::string& libraryKey) const {
    const auto fields = Split(libraryKey, '#');
    return fields[1] == "0.0" && IsGuidKnown(fields[0]);
  }

  [[nodiscard]] bool IsGuidKnown(std::string_view guid) const {
    return uses_.registry.KeyExists(std::string("HKEY_CLASSES_ROOT\\TypeLib\\").append(guid));
  }

  [[nodiscard]] bool Has64Bit(const std::string& libraryKey) const {
    const auto fields = Split(libraryKey, '#');
    std::string key("HKEY_CLASSES_ROOT\\TypeLib\\");
    key.append(fields[0]).append("\\").append(fields[1]).append("\\").append(fields[2]);
    return !uses_.registry.fnsGetRegistryValue(key.append("\\win64"), "").empty();
  }

  const CheckedGroup::Uses& uses_;
  DiskNames& disk_;
};

/// Gathers the uses of each component.
class Gathering {
 public:
  explicit Gathering(CheckedGroup& group)
      : group_(group), registration_(group.Parts(), group.Disk()) {}

  void Add(const CheckedProject& project, const ProjectLine& line) {
    const auto [at, isNew] = byValue_.try_emplace(line.value, kNone);
    if (isNew) at->second = NumberOf(line);
    const std::string_view file = ComponentFileOf(line.value);
    references_[at->second].uses.push_back(
        {&project, line.number, std::string(file), group_.ProducerOf(file, project.path)});
  }

  [[nodiscard]] std::vector<CheckedReference> Take() { return std::move(references_); }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t NumberOf(const ProjectLine& line) {
    const auto libraryKey = LibraryKeyOf(line.value);
    const auto [at, isNew] = byKey_.try_emplace(
        LowerCase(libraryKey.value_or(std::string(line.value))), references_.size());
    if (!isNew) return at->second;
    CheckedReference& reference = references_.emplace_back();
    reference.name = NameOf(line.value, ComponentFileOf(line.value));
    if (libraryKey) {
      registration_.Judge(reference, *libraryKey, line.kind == ProjectLine::Kind::Control);
    } else {
      reference.state = State::NoIdentity;
    }
    return at->second;
  }

  CheckedGroup& group_;
  Registration registration_;
  std::vector<CheckedReference> references_;
  std::unordered_map<std::string_view, std::size_t> byValue_;  ///< the same line in many projects
  std::unordered_map<std::string, std::size_t> byKey_;
};

}  // namespace

std::vector<const CheckedReference::Use*> CheckedReference::UsesNotBuilt() const {
  std::vector<const Use*> found;
  for (const Use& use : uses) {
    if (use.producer == nullptr || !use.producer->isBuilt) found.push_back(&use);
  }
  return found;
}

Finding CheckedReference::FindingOn(const std::vector<const Use*>& concerned,
                                    const std::string& text) const {
  const Use& first = *concerned.front();
  Finding finding{.file = first.project->path, .line = first.line, .subject = name, .text = text};
  for (const Use* use : concerned) finding.Concern(use->project->path);
  finding.TellNumber("use it");
  return finding;
}

std::vector<CheckedReference> ReferencesOf(CheckedGroup& group) {
  Gathering gathering(group);
  for (const CheckedProject& project : group.Projects()) {
    for (const ProjectLine& line : project.lines) {
      if (line.IsReference() && !ProjectFileOf(line.value)) gathering.Add(project, line);
    }
  }
  return gathering.Take();
}

}  // namespace gorbex
