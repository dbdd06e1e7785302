#include "check/check_list.h"

#include <algorithm>
#include <utility>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

std::string SortText(const Finding& finding, std::size_t column) {
  if (column == check_column::kText) return LowerCase(finding.text);
  if (column == check_column::kRemedy) return LowerCase(finding.remedy);
  return LowerCase(GetFileFromPath(finding.file));
}

std::string NoteOf(const Finding& finding) {
  std::string note = finding.file + "\n" + finding.text + "\n" + std::string(finding.remedy);
  if (finding.projects.size() > 1) note += "\n" + FileNames(finding.projects);
  return note + "\n[" + std::string(finding.id) + "]";
}

}  // namespace

CheckList::CheckList(frmCheck& form, const frmBuilder& window, ProjectDisplay& display,
                     const GroupCheck& check, const FileReader& files)
    : form_(form), window_(window), display_(display), check_(check), files_(files) {
  form_.cmdGoTo.SetHandler([this] { GoToProject(); });
  form_.cmdOpen.SetHandler([this] { OpenFile(); });
  form_.cmdCheck.SetHandler([this] { Refresh(); });
  form_.cmdClose.SetHandler([this] { form_.visible.Set(false); });
  subscriptions_.Add(form_.lvwFindings.selectionChanged, [this] { Offer(); });
  subscriptions_.Add(form_.headingClicked, [this](const std::size_t& column) { SortBy(column); });
  subscriptions_.Add(form_.rowActivated, [this] { Activate(); });
  Offer();
}

void CheckList::mnuToolsCheck_Click() {
  Refresh();
  form_.visible.Set(true);
}

void CheckList::TellOfNew() {
  Refresh();
  if (!findings_.empty()) form_.visible.Set(true);
}

std::string CheckList::ProblemsAtStart() const {
  CheckSelection selection = SelectionBeside(files_, window_.fileName);
  selection.isQuick = true;
  const auto errors = ErrorsIn(check_.RunOpen(selection));
  return errors == 0 ? "" : Counted(errors, "problem", "problems") + ": Check...";
}

void CheckList::Refresh() {
  std::string problem;
  findings_ = check_.RunOpen(SelectionBeside(files_, window_.fileName, &problem));
  sortedBy_ = static_cast<std::size_t>(-1);
  ShowRows();
  const std::string summary = SummaryOf(findings_);
  form_.summary.Set(problem.empty() ? summary : summary + "; " + problem);
}

void CheckList::ShowRows() {
  ListView& list = form_.lvwFindings;
  list.Clear();
  for (const Finding& finding : findings_) {
    const bool isError = finding.severity == Severity::Error;
    ListRow& row = list.Add("", WithLine(GetFileFromPath(finding.file), finding.line),
                            isError ? Image::BuildError : Image::ProjectWarning);
    row.SetSubItem(check_column::kText, finding.text);
    row.SetSubItem(check_column::kRemedy, std::string(finding.remedy));
    row.SetNote(NoteOf(finding));
  }
  list.Select(list.Count() > 0 ? &list.At(1) : nullptr);
  Offer();
}

// The same column once more reverses the order.
void CheckList::SortBy(std::size_t column) {
  isReversed_ = column == sortedBy_ && !isReversed_;
  sortedBy_ = column;
  const auto text = [&](const Finding& finding) { return SortText(finding, column); };
  const auto isBefore = [&](const std::string& a, const std::string& b) {
    return isReversed_ ? b < a : a < b;
  };
  std::ranges::stable_sort(findings_, isBefore, text);
  ShowRows();
}

const Finding* CheckList::Selected() const {
  const ListRow* row = form_.lvwFindings.Selected();
  return row == nullptr ? nullptr : &findings_.at(form_.lvwFindings.PositionOf(*row) - 1);
}

void CheckList::Offer() {
  const Finding* finding = Selected();
  form_.cmdGoTo.enabled.Set(finding != nullptr && !finding->projects.empty());
  form_.cmdOpen.enabled.Set(finding != nullptr && !finding->file.empty());
}

void CheckList::GoToProject() {
  const Finding* finding = Selected();
  if (finding == nullptr || finding->projects.empty()) return;
  if (!display_.ShowReference(finding->projects.front(), "")) OpenFile();
}

void CheckList::OpenFile() {
  const Finding* finding = Selected();
  if (finding != nullptr && !finding->file.empty()) {
    form_.fileWanted.Emit(finding->file, finding->line);
  }
}

void CheckList::Activate() {
  const Finding* finding = Selected();
  if (finding == nullptr) return;
  finding->projects.empty() ? OpenFile() : GoToProject();
}

}  // namespace gorbex
