#include <algorithm>
#include <ostream>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "cli/settings_table.h"
#include "cli/text_output.h"
#include "mail/mail_settings.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct SettingsArguments {
  std::string name;
  std::string value;
};

const Setting& Named(const std::string& name) {
  const Setting* setting = FindSetting(name);
  if (setting == nullptr || setting->stored.empty()) throw Failure(name + ": no stored setting");
  return *setting;
}

std::optional<std::string_view> OtherSetting(const std::string& name) {
  const auto found = std::ranges::find_if(
      kOtherSettings, [&](auto known) { return EqualsIgnoringCase(known, name); });
  return found == kOtherSettings.end() ? std::nullopt : std::optional(*found);
}

// The parts of a URL, even an invalid one, that a screen or a build log may show.
std::string WithoutPassword(std::string url) {
  const auto at = url.rfind('@');
  if (at == std::string::npos) return url;
  const auto scheme = url.find("://");
  if (scheme >= at) return "***" + url.substr(at);
  const auto colon = url.find(':', scheme + 3);
  return colon < at ? url.replace(colon + 1, at - colon - 1, "***") : url;
}

std::string OtherValue(const Program& program, std::string_view name) {
  std::string value = program.registry.fnsGetRegistryValue(kProgramKey, name);
  const bool isUrl = name == mail_setting::kStore || name == mail_setting::kTransport;
  return isUrl ? WithoutPassword(std::move(value)) : value;
}

void List(Frame& frame, const Program& program) {
  const clsOptions& options = program.options;
  Json object = Json::object();
  for (const Setting& setting : AllSettings()) {
    if (setting.stored.empty()) continue;
    object[std::string(setting.name)] = SettingJson(setting, options);
    if (frame.json) continue;
    frame.streams.out << Padded(std::string(setting.name), 20) << Shown(setting, options) << '\n';
  }
  for (const auto name : kOtherSettings) {
    const std::string value = OtherValue(program, name);
    object[std::string(name)] = JsonText(value);
    if (!frame.json) frame.streams.out << Padded(std::string(name), 20) << Plain(value) << '\n';
  }
  if (frame.json) PrintJson(frame, object);
}

void RequireLength(std::string_view name, std::string_view value) {
  const auto problem = RegistryTools::LengthProblem(value);
  if (problem) throw Failure(std::string(name) + ": the value " + *problem);
}

std::string SettingText(std::string_view name, const std::string& typed) {
  const auto value = FromUtf8(typed);
  if (!value) {
    throw Failure(std::string(name) + ": the value holds a character no setting can hold");
  }
  RequireLength(name, *value);
  return *value;
}

[[noreturn]] void FailNotStored(std::string_view name) {
  throw Failure(std::string(name) + ": not stored; the registry cannot be written",
                ExitStatus::WorkFailed);
}

void Change(clsOptions& options, const Setting& setting, const std::string& typed) {
  const std::string value = SettingText(setting.name, typed);
  OrFail(std::string(setting.name), [&] { setting.Take(options, value); });
  if (!options.Store(setting)) FailNotStored(setting.name);
}

// A file is known to the program by its Windows path; an empty text takes the setting back.
std::string TypedValue(const Session& session, std::string_view name, const std::string& typed) {
  const bool isPath = name == session_setting::kIniPath && !typed.empty();
  if (!isPath) return SettingText(name, typed);
  std::string path = session.ProgramPath(typed);
  RequireLength(name, path);
  return path;
}

void ShowOrChangeOther(Frame& frame, Session& session, std::string_view name,
                       const std::optional<std::string>& typed) {
  Program& program = session.program();
  if (typed) {
    const std::string value = TypedValue(session, name, *typed);
    const std::string problem = mail_setting::ProblemWith(name, value);
    if (!problem.empty()) throw Failure(std::string(name) + ": " + problem);
    program.registry.subSetRegistryValue(kProgramKey, name, value);
    if (program.registry.fnsGetRegistryValue(kProgramKey, name) != value) FailNotStored(name);
  }
  const std::string value = OtherValue(program, name);
  if (frame.json) return PrintJson(frame, Json{{std::string(name), JsonText(value)}});
  frame.streams.out << Plain(value) << '\n';
}

void Settings(Frame& frame, const SettingsArguments& arguments, bool hasValue) {
  Session session(frame);
  Program& program = session.program();
  clsOptions& options = program.options;
  if (!hasValue) session.RequireSettings();
  if (arguments.name.empty()) return List(frame, program);
  if (const auto name = OtherSetting(arguments.name)) {
    return ShowOrChangeOther(frame, session, *name,
                             hasValue ? std::optional(arguments.value) : std::nullopt);
  }
  const Setting& setting = Named(arguments.name);
  if (hasValue) Change(options, setting, arguments.value);
  if (frame.json) {
    return PrintJson(frame, Json{{std::string(setting.name), SettingJson(setting, options)}});
  }
  frame.streams.out << Shown(setting, options) << '\n';
}

}  // namespace

void AddSettingsCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "settings", "Show or change the stored settings");
  auto arguments = std::make_shared<SettingsArguments>();
  command.add_option("NAME", arguments->name, "One setting");
  auto* value = command.add_option("VALUE", arguments->value, "Its new value");
  command.callback([&frame, arguments, value] { Settings(frame, *arguments, value->count() > 0); });
}

}  // namespace gorbex::cli
