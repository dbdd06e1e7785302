#include "analysis/missing_list.h"

#include <string>

#include "core/file_tools.h"
#include "core/list_columns.h"

namespace gorbex {
namespace {

// A list keeps its selected row by key, else its first row is selected.
void SelectAgain(ListView& list, const std::string& key) {
  ListRow* row = list.Find(key);
  if (row == nullptr && list.Count() > 0) row = &list.At(1);
  list.Select(row);
}

std::string SelectedKey(const ListView& list) {
  return list.Selected() == nullptr ? std::string() : list.Selected()->Key();
}

// A malformed reference has no GUID, but a whole value that no other component has.
std::string KeyOf(const MissingComponent& component) {
  if (component.guid.empty()) return component.uses.front().reference;
  return component.guid + "#" + component.version;
}

void AddRow(ListView& list, const MissingComponent& component) {
  ListRow& row = list.Add(KeyOf(component), component.name, Image::InvalidReference);
  row.SetSubItem(missing_column::kProjects, std::to_string(component.uses.size()));
  row.SetSubItem(missing_column::kVersion, component.version);
  row.SetSubItem(missing_column::kFile, component.file);
  row.SetSubItem(missing_column::kGuid, component.guid);
  row.SetSubItem(missing_column::kVerdict, component.verdict);
}

}  // namespace

MissingList::MissingList(frmMissing& form, frmBuilder& window, ProjectDisplay& display,
                         DependencyMarking& marking)
    : form_(form),
      window_(window),
      display_(display),
      selection_(form.lvwComponents.selectionChanged.Connect([this] { ShowProjects(); })) {
  form_.cmdGoTo.SetHandler([this] { GoToProject(); });
  form_.cmdGoTo.enabled.Set(false);
  form_.cmdCheck.SetHandler([&marking] { marking.mnuToolsDependancies_Click(); });
  form_.cmdClose.SetHandler([this] { form_.visible.Set(false); });
}

void MissingList::mnuToolsMissing_Click() {
  Refresh();
  form_.visible.Set(true);
}

std::size_t MissingList::Refresh() {
  const std::string component = SelectedKey(form_.lvwComponents);
  const std::string project = SelectedKey(form_.lvwProjects);
  components_ = MissingComponents(window_);
  form_.lvwComponents.Clear();
  for (const MissingComponent& each : components_) AddRow(form_.lvwComponents, each);
  SelectAgain(form_.lvwComponents, component);
  ShowProjects();
  SelectAgain(form_.lvwProjects, project);
  return components_.size();
}

void MissingList::ShowProjects() {
  form_.lvwProjects.Clear();
  if (const ListRow* row = form_.lvwComponents.Selected()) {
    const auto number = form_.lvwComponents.PositionOf(*row) - 1;
    for (const auto& [project, reference] : components_.at(number).uses) {
      ListRow& added = form_.lvwProjects.Add(project, GetFileFromPath(project), Image::VbProject);
      added.SetSubItem(1, StripPath(project));
      added.SetTag(reference);
    }
    SelectAgain(form_.lvwProjects, "");
  }
  form_.cmdGoTo.enabled.Set(form_.lvwProjects.Selected() != nullptr);
}

void MissingList::GoToProject() {
  const ListRow* row = form_.lvwProjects.Selected();
  if (row != nullptr) display_.ShowReference(row->Key(), row->Tag());
}

}  // namespace gorbex
