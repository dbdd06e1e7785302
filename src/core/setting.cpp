#include "core/setting.h"

#include <algorithm>

#include "core/editor_call.h"
#include "core/options.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

void Assign(std::int16_t& number, double value) {
  number = ToInteger(value);
}

void Assign(std::int32_t& number, double value) {
  number = ToLong(value);
}

std::int32_t StoredJobs(const std::string& text) {
  if (text.empty()) return 1;
  return static_cast<std::int32_t>(std::clamp<double>(NumericValue(text), 0, kMostJobs));
}

std::int32_t TypedJobs(const std::string& text) {
  const std::int32_t jobs = TextToLong(text);
  if (jobs < 0 || jobs > kMostJobs) throw RuntimeError(ErrorNumber::Overflow, text);
  return jobs;
}

std::string TypedEditor(const std::string& text) {
  if (const auto problem = EditorProblem(text)) {
    throw RuntimeError::WithReason(ErrorNumber::InvalidCall, text, *problem);
  }
  return text;
}

/// Does one thing for each kind of member.
template <class... Cases>
struct PerKind : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
PerKind(Cases...) -> PerKind<Cases...>;

}  // namespace

std::string Setting::Text(const clsOptions& options) const {
  return std::visit(
      PerKind{[&](std::string clsOptions::*text) { return options.*text; },
              [&](EditorCommand command) { return options.*command.held; },
              [&](Word word) { return options.*word.held; },
              [&](bool clsOptions::*flag) { return std::string(FlagText(options.*flag)); },
              [&](Jobs jobs) { return std::to_string(options.*jobs.held); },
              [&](auto number) { return std::to_string(options.*number); }},
      member);
}

void Setting::Load(clsOptions& options, const std::string& text) const {
  std::visit(
      PerKind{[&](std::string clsOptions::*held) { options.*held = text; },
              [&](EditorCommand command) { options.*command.held = text; },
              [&](Word word) { options.*word.held = FlagText(EqualsIgnoringCase(text, "true")); },
              [&](bool clsOptions::*flag) { options.*flag = EqualsIgnoringCase(text, "true"); },
              [&](Jobs jobs) { options.*jobs.held = StoredJobs(text); },
              [&](auto number) { Assign(options.*number, NumericValue(text)); }},
      member);
}

void Setting::Take(clsOptions& options, const std::string& text) const {
  std::visit(PerKind{[&](std::string clsOptions::*held) { options.*held = text; },
                     [&](EditorCommand command) { options.*command.held = TypedEditor(text); },
                     [&](Word word) { options.*word.held = FlagText(ToFlag(text)); },
                     [&](bool clsOptions::*flag) { options.*flag = ToFlag(text); },
                     [&](Jobs jobs) { options.*jobs.held = TypedJobs(text); },
                     [&](auto number) { Assign(options.*number, TextToLong(text)); }},
             member);
}

const std::array<Setting, kSettings>& AllSettings() {
  static constexpr std::array<Setting, kSettings> kAll = {{
      {"Interval", "Interval", &clsOptions::Interval},
      {"AutoStart", "AutoStart", &clsOptions::AutoStart},
      {"GetLatest", "GetLatest", &clsOptions::GetLatest},
      {"Compatible", "Compatible", &clsOptions::Compatible},
      {"ChangeRefs", "ChangeRefs", &clsOptions::ChangeRefs},
      {"StopProcessing", "StopProcessing", &clsOptions::StopProcessing},
      {"BuildPath", "BuildPath", &clsOptions::BuildPath},
      {"WatchFolder", "WatchFolder", &clsOptions::WatchFolder},
      {"ReplyTo", "ReplyTo", &clsOptions::ReplyTo},
      {"ReplyUser", "ReplyUser", &clsOptions::ReplyUser},
      {"AutoBuildDependant", "AutoDependant", &clsOptions::AutoBuildDependant},
      {"AutoLaunchName", "AutoLaunch Name", &clsOptions::AutoLaunchName},
      {"AutoLaunchVBP", "AutoLaunch VBP", &clsOptions::AutoLaunchVBP},
      {"DebugBuild", "Debug Build", Setting::Word{&clsOptions::DebugBuild}},
      {"SkipUsersOfFailed", "SkipUsersOfFailed", &clsOptions::SkipUsersOfFailed},
      {"SkipUpToDate", "SkipUpToDate", &clsOptions::SkipUpToDate},
      {"Jobs", "Jobs", Setting::Jobs{&clsOptions::Jobs}},
      {"Editor", "Editor", Setting::EditorCommand{&clsOptions::Editor}},
      {"VersionComponents", "", &clsOptions::VersionComponents},
      {"WatchSource", "", &clsOptions::WatchSource},
  }};
  return kAll;
}

const Setting* FindSetting(std::string_view name) {
  const auto& all = AllSettings();
  const auto* found = std::ranges::find_if(
      all, [&](const Setting& setting) { return EqualsIgnoringCase(setting.name, name); });
  return found == all.end() ? nullptr : found;
}

}  // namespace gorbex
