#include "cli/completion_kinds.h"

#include <algorithm>
#include <string_view>

#include "check/check.h"
#include "cli/settings_table.h"

namespace gorbex::cli {
namespace {

bool IsAmong(const std::string& name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<std::string> CheckIds() {
  std::vector<std::string> ids;
  for (const Check& check : AllChecks()) ids.emplace_back(check.id);
  return ids;
}

CompletionKind ArgumentKind(const std::string& name) {
  CompletionKind kind;
  const auto dot = name.rfind('.');
  if (dot != std::string::npos) kind.extensions = {name.substr(dot + 1)};
  if (IsAmong(name, {"FILE", "SOURCE"})) kind.anyFile = true;
  if (name == "NAME") kind.words = SettingNames();
  if (name == "SHELL") kind.words = {"bash", "zsh"};
  if (name == "COMMAND") {
    kind.words = {"add", "arrange", "up", "down", "remove", "mark", "unmark"};
    kind.extensions = {"vbp"};
  }
  return kind;
}

}  // namespace

std::vector<std::string> TypedNames(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

CompletionKind KindOf(const CLI::Option& option) {
  if (option.get_positional()) return ArgumentKind(option.get_name(true));
  CompletionKind kind;
  const std::string name = TypedNames(option).back();
  const bool isText = option.get_type_name().starts_with("TEXT");
  if (IsAmong(name, {"--build-dir", "--prefix"})) {
    kind.folders = true;
  } else if (IsAmong(name, {"--ignore", "--only"})) {
    kind.words = CheckIds();
  } else if (!IsAmong(name, {"--comment", "--image", "--spec", "--tags", "--user", "--version"})) {
    kind.anyFile = isText;
  }
  return kind;
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& command) {
  std::vector<const CLI::Option*> options =
      command.get_options([](const CLI::Option* option) { return !option->get_positional(); });
  const CLI::App* above = command.get_parent();
  if (above == nullptr) return options;
  for (const CLI::Option* option : OptionsOf(*above)) {
    const std::string name = TypedNames(*option).back();
    const auto isSame = [&](const CLI::Option* own) { return TypedNames(*own).back() == name; };
    if (name != "--version" && std::ranges::none_of(options, isSame)) options.push_back(option);
  }
  return options;
}

std::vector<const CLI::Option*> ArgumentsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

}  // namespace gorbex::cli
