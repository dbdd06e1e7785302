#include "cli/completion.h"
#include "cli/completion_kinds.h"
#include "core/text.h"

namespace gorbex::cli {
namespace {

constexpr const char* kZshStart = R"(#compdef gorbex
# Completion of gorbex for zsh, as "gorbex completion zsh" writes it.

)";

// Inside single quotes, where brackets and colons mean something to the shell's functions.
std::string InQuotes(const std::string& text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '\'') {
      escaped += "'\\''";
    } else if (std::string("[]:\\").find(letter) != std::string::npos) {
      escaped.append(1, '\\').append(1, letter);
    } else {
      escaped += letter;
    }
  }
  return escaped;
}

std::string ZshAction(const CompletionKind& kind) {
  const std::string patterns = Joined(kind.extensions, "|");
  const std::string words = Joined(kind.words, " ");
  if (kind.anyFile) return "_files";
  if (kind.folders) return "_files -/";
  std::string files = "_files -g \"*.(#i)(" + patterns + ")(-.)\"";
  if (patterns.empty()) return words.empty() ? " " : "(" + words + ")";
  if (words.empty()) return files;
  return "{compadd " + words + "; " + files + "}";
}

std::string ZshOption(const CLI::Option& option) {
  const auto names = TypedNames(option);
  std::string spec = "'[" + InQuotes(option.get_description()) + "]";
  if (TakesValue(option)) spec += ":" + InQuotes(names.back()) + ":" + ZshAction(KindOf(option));
  spec += "'";
  if (names.size() == 1) return "'" + names.front() + spec.substr(1);
  return "'(" + Joined(names, " ") + ")'{" + Joined(names, ",") + "}" + spec;
}

std::string ZshArgument(const CLI::Option& argument, std::size_t number) {
  const bool isMany = argument.get_items_expected_max() > 1;
  return "'" + (isMany ? "*" : std::to_string(number)) + ":" + InQuotes(argument.get_name(true)) +
         ":" + ZshAction(KindOf(argument)) + "'";
}

std::string ZshFunctions(const CLI::App& app, const std::string& function) {
  std::string text = function + "() {\n  local context state state_descr line\n";
  text += "  typeset -A opt_args\n  _arguments -C";
  for (const CLI::Option* option : OptionsOf(app)) text += " \\\n    " + ZshOption(*option);
  std::size_t number = 0;
  for (const CLI::Option* argument : ArgumentsOf(app)) {
    text += " \\\n    " + ZshArgument(*argument, ++number);
  }
  const auto commands = CommandsOf(app);
  if (commands.empty()) return text + "\n}\n\n";
  text += " \\\n    '1:command:->command' '*::argument:->argument'\n  local -a commands=(";
  std::string branches;
  std::string below;
  for (const CLI::App* command : commands) {
    const std::string& name = command->get_name();
    std::string called = function;
    called.append("_").append(name);
    text.append("\n    '").append(name).append(":");
    text.append(InQuotes(command->get_description())).append("'");
    branches.append("        ").append(name).append(") ").append(called).append(" ;;\n");
    below += ZshFunctions(*command, called);
  }
  return below + text +
         "\n  )\n  case $state in\n    command) _describe command commands ;;\n    argument)\n"
         "      case $words[1] in\n" +
         branches + "      esac\n      ;;\n  esac\n}\n\n";
}

}  // namespace

std::string ZshCompletion(const CLI::App& app) {
  return kZshStart + ZshFunctions(app, "_gorbex") + "_gorbex \"$@\"\n";
}

}  // namespace gorbex::cli
