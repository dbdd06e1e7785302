#include "build/run_schedule.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

#include "analysis/dependency_graph.h"
#include "build/run_uses.h"

namespace gorbex {

using std::chrono::milliseconds;

namespace {

/// The projects that write a file, in the order of the queue.
using Writers = std::unordered_map<std::string, std::vector<std::size_t>>;

Writers WritersOf(const std::vector<ScheduledProject>& projects) {
  Writers writers;
  for (std::size_t i = 0; i < projects.size(); ++i) {
    if (!projects[i].writes.empty()) writers[projects[i].writes].push_back(i);
  }
  return writers;
}

// Between the writers before and after it, as they are in the queue.
void PutBetween(std::vector<ScheduledProject>& projects, std::size_t project,
                const std::vector<std::size_t>& writers) {
  const auto next = std::upper_bound(writers.begin(), writers.end(), project);
  if (next != writers.end()) projects[*next].uses.push_back(project);
  const auto last = std::lower_bound(writers.begin(), writers.end(), project);
  if (last != writers.begin()) projects[project].uses.push_back(*std::prev(last));
}

// A project that uses one of the writers of a file waits for the last of them.
void UseLastWriters(ScheduledProject& user, const std::vector<ScheduledProject>& projects,
                    const Writers& writers) {
  const std::size_t count = user.uses.size();
  for (std::size_t i = 0; i < count; ++i) {
    const auto found = writers.find(projects[user.uses[i]].writes);
    if (found != writers.end()) user.uses.push_back(found->second.back());
  }
}

void KeepOrderOfFiles(std::vector<ScheduledProject>& projects) {
  const Writers writers = WritersOf(projects);
  for (ScheduledProject& user : projects) UseLastWriters(user, projects, writers);
  for (const auto& [file, all] : writers) {
    for (std::size_t i = 1; i < all.size(); ++i) projects[all[i]].uses.push_back(all[i - 1]);
  }
  for (std::size_t i = 0; i < projects.size(); ++i) {
    const auto found = writers.find(projects[i].reads);
    if (found != writers.end()) PutBetween(projects, i, found->second);
  }
}

}  // namespace

RunSchedule::RunSchedule(std::vector<ScheduledProject> projects) : projects_(projects.size()) {
  KeepOrderOfFiles(projects);
  std::vector<std::vector<std::size_t>> uses(projects.size());
  for (std::size_t i = 0; i < projects.size(); ++i) {
    uses[i] = std::move(projects[i].uses);
    projects_[i].claims = std::move(projects[i].claims);
  }
  const DependencyGraph graph(WithoutCircles(std::move(uses)));
  for (std::size_t i = 0; i < projects_.size(); ++i) {
    projects_[i].waitsFor = graph.UsesOf(i).size();
    for (const std::size_t used : graph.UsesOf(i)) projects_[used].users.push_back(i);
  }
  TakeDurations(projects);
  MeasureWays(graph.BuildOrder());
  for (std::size_t i = 0; i < projects_.size(); ++i) {
    if (projects_[i].waitsFor == 0) Offer(i);
  }
}

// A project that was never built takes as long as the others on average.
void RunSchedule::TakeDurations(const std::vector<ScheduledProject>& projects) {
  milliseconds sum{0};
  milliseconds::rep known = 0;
  for (const auto& project : projects) {
    if (!project.lastDuration) continue;
    sum += *project.lastDuration;
    ++known;
  }
  knowsDurations_ = known > 0;
  const milliseconds mean = knowsDurations_ ? sum / known : milliseconds(1);
  for (std::size_t i = 0; i < projects.size(); ++i) {
    projects_[i].duration = projects[i].lastDuration.value_or(mean);
  }
}

void RunSchedule::MeasureWays(const std::vector<std::size_t>& buildOrder) {
  for (auto place = buildOrder.rbegin(); place != buildOrder.rend(); ++place) {
    Project& project = projects_[*place];
    for (const std::size_t user : project.users) {
      project.wayToEnd = std::max(project.wayToEnd, projects_[user].wayToEnd);
    }
    project.wayToEnd += project.duration;
  }
}

void RunSchedule::Offer(std::size_t project) {
  ready_.emplace(-projects_[project].wayToEnd, project);
}

std::optional<std::size_t> RunSchedule::Next() {
  const auto isFree = [&](const auto& ready) {
    const auto& claims = projects_[ready.second].claims;
    return std::ranges::none_of(claims, [&](const auto& each) { return claimed_.contains(each); });
  };
  const auto found = std::ranges::find_if(ready_, isFree);
  if (found == ready_.end()) return std::nullopt;
  const std::size_t project = found->second;
  ready_.erase(found);
  claimed_.insert(projects_[project].claims.begin(), projects_[project].claims.end());
  return project;
}

void RunSchedule::Done(std::size_t project) {
  ++done_;
  for (const std::string& claim : projects_[project].claims) claimed_.erase(claim);
  for (const std::size_t user : projects_[project].users) {
    if (--projects_[user].waitsFor == 0) Offer(user);
  }
}

// The end of the run, if each project takes as long as last time. The ends of those at work are
// given. Claims are left out, since they seldom decide.
milliseconds RunSchedule::Rehearse(std::size_t places, std::vector<Moment> ends) const {
  const auto isLater = std::greater<>();
  std::vector<Moment> ready(ready_.begin(), ready_.end());  // in the order of a heap
  std::vector<std::size_t> waitsFor;
  waitsFor.reserve(projects_.size());
  for (const Project& project : projects_) waitsFor.push_back(project.waitsFor);
  const auto put = [&](std::vector<Moment>& heap, milliseconds time, std::size_t project) {
    heap.emplace_back(time, project);
    std::push_heap(heap.begin(), heap.end(), isLater);
  };
  const auto take = [&](std::vector<Moment>& heap) {
    std::pop_heap(heap.begin(), heap.end(), isLater);
    const Moment first = heap.back();
    heap.pop_back();
    return first;
  };
  std::make_heap(ends.begin(), ends.end(), isLater);
  for (milliseconds now{0};;) {
    while (ends.size() < places && !ready.empty()) {
      const std::size_t next = take(ready).second;
      put(ends, now + projects_[next].duration, next);
    }
    if (ends.empty()) return now;
    const auto [end, ended] = take(ends);
    now = end;
    for (const std::size_t user : projects_[ended].users) {
      if (--waitsFor[user] == 0) put(ready, -projects_[user].wayToEnd, user);
    }
  }
}

std::optional<TimeEstimate> RunSchedule::TimeLeft(std::size_t places,
                                                  const std::vector<ProjectAtWork>& atWork) const {
  if (!knowsDurations_) return std::nullopt;
  milliseconds present{0};
  std::vector<Moment> ends;
  for (const auto& [project, time] : atWork) {
    ends.emplace_back(std::max(projects_[project].duration - time, milliseconds(0)), project);
    present = std::max(present, ends.back().first);
  }
  const milliseconds left = Rehearse(places, std::move(ends));
  return TimeEstimate{left, present};
}

}  // namespace gorbex
