#include "analysis/missing_components.h"

#include <algorithm>
#include <unordered_map>

#include "analysis/reference_resolution.h"
#include "core/file_tools.h"
#include "core/reference_nodes.h"
#include "core/reference_value.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// A malformed value has fewer fields than it should.
std::string FieldOrNothing(const std::vector<std::string_view>& fields, std::size_t number) {
  return number < fields.size() ? std::string(fields[number]) : std::string();
}

std::string NameOf(const MissingComponent& component, const std::string& description) {
  if (!description.empty()) return description;
  std::string file = GetFileFromPath(component.file);
  if (!file.empty()) return file;
  return component.file.empty() ? component.guid : component.file;
}

MissingComponent ComponentOf(const TreeNode& node) {
  const std::string& value = node.Text();
  const auto fields = Split(value, '#');
  const bool isTypeLibrary = IsTypeLibraryReference(value);
  MissingComponent component;
  component.guid = GetGUID(FieldOrNothing(fields, 0));
  component.version = FieldOrNothing(fields, 1);
  if (fields.size() > (isTypeLibrary ? 3U : 2U)) component.file = ComponentPath(value);
  component.name = NameOf(component, isTypeLibrary ? FieldOrNothing(fields, 4) : "");
  if (component.name.empty()) component.name = value;
  component.verdict = node.Checked() ? kNoPath : kInvalidGuid;
  return component;
}

/// Gathers the uses of each component.
class Gathering {
 public:
  void Add(const std::string& project, const TreeNode& node) {
    const std::string& value = node.Text();
    if (node.ImageOf() != Image::InvalidReference || ProjectFileOf(value)) return;
    auto component = ComponentOf(node);
    const auto [at, isNew] = numbers_.try_emplace(KeyOf(component, value), components_.size());
    if (isNew) components_.push_back(std::move(component));
    auto& uses = components_[at->second].uses;
    const bool isKnown = !uses.empty() && uses.back().project == project;
    if (!isKnown) uses.push_back({project, value});
  }

  [[nodiscard]] std::vector<MissingComponent> Take() { return std::move(components_); }

 private:
  static std::string KeyOf(const MissingComponent& component, const std::string& value) {
    return LowerCase(component.guid.empty() ? value : component.guid + "#" + component.version);
  }

  std::vector<MissingComponent> components_;
  std::unordered_map<std::string, std::size_t> numbers_;  ///< by GUID and version
};

}  // namespace

std::vector<MissingComponent> MissingComponents(const frmBuilder& window) {
  Gathering gathering;
  for (const TreeNode* project : window.ProjectNodes()) {
    ForEachReference(*project, [&](const TreeNode& node) { gathering.Add(project->Text(), node); });
  }
  auto components = gathering.Take();
  std::stable_sort(components.begin(), components.end(), [](const auto& a, const auto& b) {
    if (a.uses.size() != b.uses.size()) return a.uses.size() > b.uses.size();
    return LowerCase(a.name) < LowerCase(b.name);
  });
  return components;
}

std::string MissingText(std::size_t components) {
  if (components == 0) return "No component missing";
  return Counted(components, "component missing", "components missing");
}

}  // namespace gorbex
