#include "report/last_run_list.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <utility>

#include "core/file_tools.h"
#include "platform/code_page.h"
#include "report/run_page.h"

namespace gorbex {

using std::chrono::milliseconds;

namespace {

Image IconOf(ProjectResult state) {
  static constexpr Image kIcons[] = {Image::VbProject,  Image::Building, Image::BuildOk,
                                     Image::BuildError, Image::UpToDate, Image::ProjectWarning,
                                     Image::VbProject};
  return kIcons[static_cast<std::size_t>(state)];
}

std::string ReportName(const std::string& buildProject) {
  const std::string name = GetFileFromPath(buildProject);
  return (name.empty() ? "Untitled" : name.substr(0, name.rfind('.'))) + ".html";
}

}  // namespace

LastRunList::LastRunList(const Uses& uses) : uses_(uses), sortedBy_(last_run_column::kDuration) {
  frmLastRun& form = uses_.form;
  form.cmdGoTo.SetHandler([this] { GoToProject(); });
  form.cmdSave.SetHandler([this] { SaveReport(); });
  form.cmdClose.SetHandler([this] { uses_.form.visible.Set(false); });
  subscriptions_.Add(form.lvwProjects.selectionChanged, [this] {
    Offer();
    uses_.form.timelineChanged.Emit();
  });
  subscriptions_.Add(form.headingClicked, [this](const std::size_t& column) { SortBy(column); });
  subscriptions_.Add(uses_.run.began, [this] { Forget(); });
  // While the run goes on, ticks show it: many projects may end at once.
  subscriptions_.Add(uses_.run.changed, [this] {
    if (uses_.form.visible.Get() && !uses_.run.IsGoing()) Refresh();
  });
  Offer();
}

void LastRunList::mnuWindowLastRun_Click() {
  Refresh();
  uses_.form.visible.Set(true);
}

void LastRunList::Tick() {
  if (uses_.run.IsGoing()) Refresh();
}

// Nothing of the run before must be taken for a part of this one.
void LastRunList::Forget() {
  timeline_ = {};
  shown_.clear();
  uses_.form.lvwProjects.Clear();
  uses_.form.summary.Set("");
  if (uses_.form.visible.Get()) Refresh();
}

void LastRunList::Refresh() {
  if (uses_.run.HasBegun()) {
    timeline_ = uses_.run.Timeline();
    FillRows();
    uses_.form.summary.Set(Summary());
  }
  Offer();
  uses_.form.timelineChanged.Emit();
}

std::string LastRunList::Summary() const {
  std::string text = SummaryOf(uses_.run.Record(), timeline_);
  const std::size_t places = uses_.run.Terms().places;
  if (timeline_.places < places) {
    text.append(", ").append(std::to_string(timeline_.places)).append(" of ");
    text.append(std::to_string(places)).append(" places used");
  }
  return text;
}

// Rows stay in place as long as the order does, so that the user's selection and place are kept.
void LastRunList::FillRows() {
  ListView& list = uses_.form.lvwProjects;
  const auto order = SortedProjects();
  const auto& projects = uses_.run.Record().Projects();
  std::vector<std::string> paths;
  paths.reserve(order.size());
  for (const std::size_t project : order) paths.push_back(projects[project].path);
  if (paths != shown_) {
    const std::string selected = list.Selected() == nullptr ? "" : list.Selected()->Key();
    list.Clear();
    for (const std::string& path : paths) list.Add(path, GetFileFromPath(path), Image::None);
    if (ListRow* row = list.Find(selected)) list.Select(row);
    shown_ = std::move(paths);
  }
  for (std::size_t i = 0; i < order.size(); ++i) FillRow(list.At(i + 1), order[i]);
}

void LastRunList::FillRow(ListRow& row, std::size_t project) const {
  const RunRecord& record = uses_.run.Record();
  const RunRecord::Project& shown = record.Projects()[project];
  const ProjectResult state = ResultOf(record, shown);
  const auto& bar = timeline_.barOf[project];
  const TimelineBar* begun = bar ? &timeline_.bars[*bar] : nullptr;
  const bool isTimed = begun != nullptr && state != ProjectResult::UpToDate;
  const auto set = [&](std::size_t column, std::string text) {
    if (row.SubItem(column) != text) row.SetSubItem(column, std::move(text));
  };
  set(last_run_column::kResult, std::string(NameOf(state)));
  set(last_run_column::kStart, begun == nullptr ? "" : TimeText(begun->start));
  set(last_run_column::kDuration, isTimed ? TimeText(begun->Duration()) : "");
  set(last_run_column::kCritical, begun != nullptr && begun->isCritical ? "yes" : "");
  set(last_run_column::kReason, ReasonText(record, shown));
  row.SetNote(begun == nullptr ? "" : BarText(record, *begun));
  if (row.Icon() != IconOf(state)) row.SetIcon(IconOf(state));
}

std::vector<std::size_t> LastRunList::SortedProjects() const {
  std::vector<std::size_t> order(uses_.run.Record().Projects().size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
    return isReversed_ ? IsBefore(b, a) : IsBefore(a, b);
  });
  return order;
}

bool LastRunList::IsBefore(std::size_t a, std::size_t b) const {
  const RunRecord& record = uses_.run.Record();
  const auto textOf = [&](std::size_t project) {
    const RunRecord::Project& shown = record.Projects()[project];
    if (sortedBy_ == last_run_column::kResult) return std::string(NameOf(ResultOf(record, shown)));
    if (sortedBy_ == last_run_column::kReason) return LowerCase(ReasonText(record, shown));
    return LowerCase(GetFileFromPath(shown.path));
  };
  const auto timeOf = [&](std::size_t project) {
    const auto& bar = timeline_.barOf[project];
    if (!bar) return milliseconds(-1);
    const TimelineBar& begun = timeline_.bars[*bar];
    if (sortedBy_ == last_run_column::kCritical) return milliseconds(begun.isCritical ? 1 : 0);
    return sortedBy_ == last_run_column::kStart ? begun.start : begun.Duration();
  };
  const bool isTime = sortedBy_ == last_run_column::kStart ||
                      sortedBy_ == last_run_column::kDuration ||
                      sortedBy_ == last_run_column::kCritical;
  return isTime ? timeOf(a) < timeOf(b) : textOf(a) < textOf(b);
}

// The same column once more reverses the order. Long times are looked for before short ones.
void LastRunList::SortBy(std::size_t column) {
  isReversed_ = column == sortedBy_
                    ? !isReversed_
                    : column == last_run_column::kDuration || column == last_run_column::kCritical;
  sortedBy_ = column;
  Refresh();
}

ProjectState LastRunList::StateOfBar(std::size_t bar) const {
  const RunRecord& record = uses_.run.Record();
  return StateOf(ResultOf(record, record.Projects()[timeline_.bars[bar].project]));
}

std::string LastRunList::NameOfBar(std::size_t bar) const {
  return GetFileFromPath(uses_.run.Record().Projects()[timeline_.bars[bar].project].path);
}

std::string LastRunList::TipOfBar(std::size_t bar) const {
  return BarText(uses_.run.Record(), timeline_.bars[bar]);
}

std::optional<std::size_t> LastRunList::SelectedBar() const {
  const ListRow* row = uses_.form.lvwProjects.Selected();
  if (row == nullptr) return std::nullopt;
  const auto& projects = uses_.run.Record().Projects();
  for (std::size_t i = 0; i < timeline_.bars.size(); ++i) {
    if (projects[timeline_.bars[i].project].path == row->Key()) return i;
  }
  return std::nullopt;
}

void LastRunList::SelectBar(std::size_t bar) {
  ListView& list = uses_.form.lvwProjects;
  ListRow* row = list.Find(uses_.run.Record().Projects()[timeline_.bars[bar].project].path);
  list.Select(row);
  if (row != nullptr) row->EnsureVisible();
}

void LastRunList::SelectNextBar(bool isForward) {
  if (timeline_.bars.empty()) return;
  const auto selected = SelectedBar();
  const std::size_t last = timeline_.bars.size() - 1;
  if (!selected) {
    SelectBar(isForward ? 0 : last);
  } else if (isForward) {
    SelectBar(std::min(*selected + 1, last));
  } else if (*selected > 0) {
    SelectBar(*selected - 1);
  }
}

void LastRunList::Offer() {
  uses_.form.cmdGoTo.enabled.Set(uses_.form.lvwProjects.Selected() != nullptr);
  uses_.form.cmdSave.enabled.Set(uses_.run.HasBegun() && !uses_.run.IsGoing());
}

void LastRunList::GoToProject() {
  const ListRow* row = uses_.form.lvwProjects.Selected();
  if (row != nullptr) static_cast<void>(uses_.display.ShowReference(row->Key(), ""));
}

void LastRunList::SaveReport() {
  Procedure(uses_.report, ": frmLastRun.cmdSaveReport_Click").Run([&](Procedure& on) {
    const auto path = on([&] {
      return uses_.dialogs.SaveFile(
          {"Save Report", "Web Pages (*.html)|*.html", ReportName(uses_.run.Terms().file)});
    });
    if (!path) return;
    on([&] {
      const RunReport report =
          uses_.reports.Of(uses_.run.Record(), uses_.run.Terms(), {}, &uses_.run.UsesOfRun());
      uses_.files.Write(*path, RunPage(report));
    });
    on([&] { uses_.window.SetStatus("Report Saved"); });
  });
}

}  // namespace gorbex
