#include <ostream>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "cli/settings_table.h"
#include "cli/text_output.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct Arguments {
  std::string name;
  std::string value;
};

const Setting& Named(const std::string& name) {
  const Setting* setting = FindSetting(name);
  if (setting == nullptr || !setting->stored) {
    throw Failure(ExitStatus::Unusable, name + ": no stored setting");
  }
  return *setting;
}

void List(Frame& frame, const clsOptions& options) {
  Json object = Json::object();
  for (const Setting& setting : AllSettings()) {
    if (!setting.stored) continue;
    object[std::string(setting.name)] = setting.Get(options);
    if (frame.json) continue;
    frame.streams.out << Padded(std::string(setting.name), 20) << Shown(setting, options) << '\n';
  }
  if (frame.json) frame.streams.out << object.dump() << '\n';
}

void Change(clsOptions& options, const Setting& setting, const std::string& typed) {
  const auto value = FromUtf8(typed);
  if (!value)
    throw Failure(ExitStatus::Unusable, typed + ": holds a character no setting can hold");
  try {
    setting.Set(options, *value);
  } catch (const RuntimeError& error) {
    throw Failure(ExitStatus::Unusable,
                  std::string(setting.name) + ": " + Plain(error.Description()));
  }
  const auto wanted = setting.Get(options);
  options.SaveSettings();
  options.LoadSettings();
  if (setting.Get(options) != wanted) {
    throw Failure(ExitStatus::WorkFailed,
                  std::string(setting.name) + ": not stored; the registry cannot be written");
  }
}

void Settings(Frame& frame, const Arguments& arguments, bool hasValue) {
  Session session(frame);
  clsOptions& options = session.program().options;
  if (arguments.name.empty()) {
    List(frame, options);
    return;
  }
  const Setting& setting = Named(arguments.name);
  if (hasValue) Change(options, setting, arguments.value);
  if (frame.json) {
    frame.streams.out << Json{{std::string(setting.name), setting.Get(options)}}.dump() << '\n';
  } else {
    frame.streams.out << Shown(setting, options) << '\n';
  }
}

}  // namespace

void AddSettingsCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "settings", "Show or change the stored settings");
  auto arguments = std::make_shared<Arguments>();
  command.add_option("NAME", arguments->name, "One setting");
  auto* value = command.add_option("VALUE", arguments->value, "Its new value");
  command.callback([&frame, arguments, value] { Settings(frame, *arguments, value->count() > 0); });
}

}  // namespace gorbex::cli
