#include "analysis/dependency_picture.h"

#include <algorithm>
#include <cmath>

#include "analysis/dependency_graph.h"
#include "core/reference_nodes.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

Image ImageOf(ProjectState state) {
  switch (state) {
    case ProjectState::Building:
      return Image::Building;
    case ProjectState::Built:
      return Image::BuildOk;
    case ProjectState::Failed:
      return Image::BuildError;
    case ProjectState::UpToDate:
      return Image::UpToDate;
    default:
      return Image::VbProject;
  }
}

}  // namespace

DependencyPicture::DependencyPicture(frmDependencies& form, frmBuilder& window,
                                     const GroupDependency& group, ProjectDisplay& display,
                                     RunEvents& runs, Signal<CompileEnded>& compiles, Judge judge)
    : form_(form), window_(window), group_(group), display_(display), judge_(std::move(judge)) {
  form_.cmdClose.SetHandler([this] { form_.visible.Set(false); });
  form_.cmdOutdated.SetHandler([this] { ShowOutdated(); });
  Follow(runs, compiles);
}

void DependencyPicture::Follow(RunEvents& runs, Signal<CompileEnded>& compiles) {
  const auto follow = [this](auto& signal, auto listener) { subscriptions_.Add(signal, listener); };
  follow(runs, [this](const RunEvent& event) { Hear(event); });
  follow(compiles, [this](const CompileEnded& compile) {
    Tell(compile.path, compile.succeeded ? ProjectState::Built : ProjectState::Failed);
  });
  const auto stale = [this](const auto&...) { isStale_ = true; };
  follow(window_.ProjectMembers.added, stale);
  follow(window_.ProjectMembers.removing, stale);
  follow(window_.ProjectMembers.cleared, [this] {
    isStale_ = true;
    told_.clear();
  });
  const auto anew = [this](const auto&...) { isRestated_ = true; };
  follow(window_.lvwQueue.rowChanged, anew);
  follow(window_.lvwQueue.cleared, anew);
  follow(window_.lvwQueue.reordered, anew);
  follow(window_.tvwProjects.selectionChanged, anew);
  follow(form_.lvwProjects.selectionChanged, [this] {
    const ListRow* row = form_.lvwProjects.Selected();
    const auto found = row == nullptr ? numbers_.end() : numbers_.find(row->Key());
    if (found != numbers_.end()) Select(found->second);
  });
}

void DependencyPicture::Hear(const RunEvent& event) {
  if (const auto* run = std::get_if<RunStarted>(&event)) {
    if (!run->isRepeat) told_.clear();
    form_.cmdOutdated.enabled.Set(false);
    isRestated_ = true;
  } else if (const auto* started = std::get_if<ProjectStarted>(&event)) {
    Tell(started->path, ProjectState::Building);
  } else if (const auto* skipped = std::get_if<ProjectSkipped>(&event)) {
    Tell(skipped->path, ProjectState::Skipped);
  } else if (const auto* fresh = std::get_if<ProjectUpToDate>(&event)) {
    Tell(fresh->path, ProjectState::UpToDate);
  } else if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) {
    Tell(compiled->path, compiled->succeeded ? ProjectState::Built : ProjectState::Failed);
  } else if (std::holds_alternative<RunEnded>(event)) {
    // Builds repoint references, and one that was aborted has no result.
    std::erase_if(told_, [](const auto& each) { return each.second == ProjectState::Building; });
    form_.cmdOutdated.enabled.Set(true);
    isStale_ = true;
  }
}

void DependencyPicture::Tell(const std::string& path, ProjectState state) {
  told_[path] = state;
  isRestated_ = true;
}

// The look replaces the results of the last run.
void DependencyPicture::ShowOutdated() {
  told_.clear();
  for (const auto& [path, isOutdated] : judge_()) {
    told_[path] = isOutdated ? ProjectState::OutOfDate : ProjectState::UpToDate;
  }
  isRestated_ = true;
  CatchUp();
}

void DependencyPicture::mnuWindowDependencies_Click() {
  Refresh();
  form_.visible.Set(true);
}

void DependencyPicture::Refresh() {
  const DependencyGraph graph(window_.ProjectMembers, group_);
  projects_ = PictureProjectsOf(window_.ProjectMembers);
  layout_ = LayOut(graph, projects_);
  paths_.clear();
  numbers_.clear();
  uses_.clear();
  for (const auto& member : window_.ProjectMembers) {
    numbers_[member->path] = paths_.size();
    uses_.push_back(graph.UsesOf(paths_.size()));
    paths_.push_back(member->path);
  }
  users_ = graph.Users();
  states_.assign(paths_.size(), ProjectState::None);
  selected_.reset();
  Order();
  FillList();
  form_.summary.Set(PictureSummary(layout_));
  isStale_ = false;
  TakeStates();
  TakeSelection();
  laidOut.Emit();
}

void DependencyPicture::CatchUp() {
  if (!form_.visible.Get()) return;
  if (isStale_) Refresh();
  if (!isRestated_) return;
  isRestated_ = false;
  TakeStates();
  TakeSelection();
  restated.Emit();
}

void DependencyPicture::Order() {
  order_.resize(paths_.size());
  for (std::size_t i = 0; i < order_.size(); ++i) order_[i] = i;
  std::sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) {
    const GroupBox& one = layout_.boxes[a];
    const GroupBox& other = layout_.boxes[b];
    return std::pair(one.x, one.y) < std::pair(other.x, other.y);
  });
}

void DependencyPicture::FillList() {
  ListView& list = form_.lvwProjects;
  list.Clear();
  for (const std::size_t project : order_) {
    ListRow& row =
        list.Add(paths_[project], FromUtf8Roughly(projects_[project].name), Image::VbProject);
    const GroupBox& box = layout_.boxes[project];
    row.SetSubItem(dependency_column::kLevel,
                   std::to_string(box.level) + (box.isInCircle ? ", in a circle" : ""));
    row.SetSubItem(dependency_column::kState, std::string(gorbex::NameOf(ProjectState::None)));
    row.SetSubItem(dependency_column::kUses, std::to_string(uses_[project].size()));
    row.SetSubItem(dependency_column::kUsers, std::to_string(users_[project].size()));
    row.SetNote(paths_[project]);
  }
}

std::string DependencyPicture::Names(const std::vector<std::size_t>& projects) const {
  std::string names;
  for (const std::size_t project : projects) {
    names.append(names.empty() ? "" : ", ").append(FromUtf8Roughly(projects_[project].name));
  }
  return names;
}

ProjectState DependencyPicture::StateNow(const std::string& path) const {
  const auto told = told_.find(path);
  if (told != told_.end()) return told->second;
  const ListRow* row = window_.lvwQueue.Find(path);
  return row != nullptr && row->Checked() ? ProjectState::Checked : ProjectState::None;
}

void DependencyPicture::TakeStates() {
  for (std::size_t project = 0; project < paths_.size(); ++project) {
    const ProjectState state = StateNow(paths_[project]);
    if (state == states_[project]) continue;
    states_[project] = state;
    ListRow* row = form_.lvwProjects.Find(paths_[project]);
    if (row == nullptr) continue;
    row->SetSubItem(dependency_column::kState, std::string(gorbex::NameOf(state)));
    row->SetIcon(ImageOf(state));
  }
}

void DependencyPicture::TakeSelection() {
  const TreeNode* node = ProjectAbove(window_.tvwProjects.Selected());
  const auto found = node == nullptr ? numbers_.end() : numbers_.find(node->Text());
  selected_.reset();
  if (found != numbers_.end()) selected_ = found->second;
  ListRow* row = selected_ ? form_.lvwProjects.Find(paths_[*selected_]) : nullptr;
  if (row != form_.lvwProjects.Selected()) form_.lvwProjects.Select(row);
  const std::string details = selected_ ? DetailsOf(*selected_) : "";
  if (details != form_.txtDetails.text.Get()) form_.txtDetails.text.Set(details);
}

std::string DependencyPicture::DetailsOf(std::size_t project) const {
  const GroupBox& box = layout_.boxes[project];
  const auto orNone = [](const std::string& names) { return names.empty() ? "nothing" : names; };
  const std::string line(kLineBreak);
  return FromUtf8Roughly(projects_[project].name) + ", " +
         std::string(gorbex::NameOf(states_[project])) + line + paths_[project] + line + "Level " +
         std::to_string(box.level) + (box.isInCircle ? ", in a circle" : "") + line +
         "Uses: " + orNone(Names(uses_[project])) + line +
         "Used by: " + orNone(Names(users_[project]));
}

std::string DependencyPicture::NoteOf(std::size_t project) const {
  const GroupBox& box = layout_.boxes[project];
  return projects_[project].path + "\nLevel " + std::to_string(box.level) + ", uses " +
         std::to_string(box.uses) + ", used by " + std::to_string(box.users) +
         (box.isInCircle ? ", in a circle" : "") + "\n" +
         std::string(gorbex::NameOf(states_[project]));
}

std::optional<std::size_t> DependencyPicture::At(const PicturePoint& point) const {
  for (std::size_t project = 0; project < layout_.boxes.size(); ++project) {
    const GroupBox& box = layout_.boxes[project];
    if (point.x >= box.x && point.x < box.x + box.width && point.y >= box.y &&
        point.y < box.y + box.height) {
      return project;
    }
  }
  return std::nullopt;
}

void DependencyPicture::Select(std::size_t project) {
  if (selected_ == project) return;
  selected_ = project;
  TreeNode* node = window_.tvwProjects.Find(NodeKey(node_prefix::kProject, paths_[project]));
  if (node != nullptr) {
    window_.tvwProjects.Select(node);
    display_.ShowProjectDetails(*node);
    display_.FollowTree();
  }
  TakeSelection();
  restated.Emit();
}

void DependencyPicture::Step(Way way) {
  if (order_.empty()) return;
  if (!selected_) {
    Select(order_.front());
    return;
  }
  std::optional<std::size_t> next;
  if (way == Way::ToUsed) next = Nearest(uses_[*selected_]);
  if (way == Way::ToUser) next = Nearest(users_[*selected_]);
  if (way == Way::Up || way == Way::Down) next = Neighbour(*selected_, way == Way::Down);
  if (next) Select(*next);
}

std::optional<std::size_t> DependencyPicture::Nearest(
    const std::vector<std::size_t>& projects) const {
  const GroupBox& from = layout_.boxes[*selected_];
  std::optional<std::size_t> nearest;
  double least = 0;
  for (const std::size_t project : projects) {
    const GroupBox& box = layout_.boxes[project];
    const double way = std::hypot(box.x - from.x, box.y - from.y);
    if (project == *selected_ || (nearest && way >= least)) continue;
    nearest = project;
    least = way;
  }
  return nearest;
}

std::optional<std::size_t> DependencyPicture::Neighbour(std::size_t project, bool isBelow) const {
  const auto at = std::find(order_.begin(), order_.end(), project);
  if (isBelow ? at + 1 == order_.end() : at == order_.begin()) return std::nullopt;
  const std::size_t next = isBelow ? *(at + 1) : *(at - 1);
  if (layout_.boxes[next].level != layout_.boxes[project].level) return std::nullopt;
  return next;
}

SearchHit DependencyPicture::Find(std::string_view wanted, SearchDirection direction) {
  if (wanted.empty()) return {};
  SearchHits<const std::string> hits(selected_ ? &paths_[*selected_] : nullptr);
  for (const std::size_t project : order_) {
    const std::string& path = paths_[project];
    const std::string name = FromUtf8Roughly(projects_[project].name);
    hits.Look(path, ContainsIgnoringCase(path, wanted) || ContainsIgnoringCase(name, wanted));
  }
  const SearchHit hit = hits.Hit(direction);
  if (hit.number > 0) Select(numbers_.at(hits.At(hit)));
  return hit;
}

}  // namespace gorbex
