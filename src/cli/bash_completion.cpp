#include <cctype>
#include <map>

#include "cli/completion.h"
#include "cli/completion_kinds.h"
#include "core/text.h"

namespace gorbex::cli {
namespace {

constexpr const char* kBashStart =
    R"(# Completion of gorbex for bash, as "gorbex completion bash" writes it.

# WORDS NAMES...: the words that fit, and files and folders
_gorbex_offer() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur"; shift; _gorbex_names "$@")
}

# Each name is "files", "folders" or a pattern of files, to which folders lead.
_gorbex_names() {
  local name
  [ "${1-files}" = files ] || compgen -d -- "$cur"
  for name; do
    case $name in
      files) compgen -f -- "$cur" ;;
      folders) ;;
      *) compgen -f -X "!$name" -- "$cur" ;;
    esac
  done
}

_gorbex() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command= i
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; ++i)); do
    case ${COMP_WORDS[i]} in
      --prefix) ((++i)) ;;
      -*) ;;
      *)
        case $command in
          '') command=${COMP_WORDS[i]} ;;
)";

constexpr const char* kBashEnd = R"(  esac
}
complete -o filenames -F _gorbex gorbex
)";

// Windows names have no letter case.
std::string InEitherCase(const std::string& extension) {
  std::string pattern = "*.";
  for (const char letter : extension) {
    const auto byte = static_cast<unsigned char>(letter);
    pattern.append(
        {'[', static_cast<char>(std::tolower(byte)), static_cast<char>(std::toupper(byte)), ']'});
  }
  return pattern;
}

void Join(CompletionKind& kind, const CompletionKind& other) {
  kind.folders = kind.folders || other.folders;
  kind.anyFile = kind.anyFile || other.anyFile;
  kind.words.insert(kind.words.end(), other.words.begin(), other.words.end());
  kind.extensions.insert(kind.extensions.end(), other.extensions.begin(), other.extensions.end());
}

std::string Offer(const CompletionKind& kind) {
  std::string offer = "_gorbex_offer '" + Joined(kind.words, " ") + "'";
  if (kind.anyFile) return offer + " files";
  if (kind.folders) offer += " folders";
  for (const std::string& extension : kind.extensions) {
    offer.append(" '").append(InEitherCase(extension)).append("'");
  }
  return offer;
}

std::string OptionValues(const std::vector<const CLI::Option*>& options) {
  std::map<std::string, std::vector<std::string>> names;  // of the options, by what is offered
  for (const CLI::Option* option : options) {
    if (!TakesValue(*option)) continue;
    for (const std::string& name : TypedNames(*option))
      names[Offer(KindOf(*option))].push_back(name);
  }
  if (names.empty()) return "";
  std::string text = "      case $previous in\n";
  for (const auto& [offer, of] : names) {
    text.append("        ").append(Joined(of, " | ")).append(") ").append(offer);
    text += "; return ;;\n";
  }
  return text + "      esac\n";
}

std::string Branch(const CLI::App& command, const std::string& path) {
  std::vector<std::string> optionNames;
  for (const CLI::Option* option : OptionsOf(command)) {
    for (const std::string& name : TypedNames(*option)) optionNames.push_back(name);
  }
  CompletionKind kind;
  for (const CLI::Option* argument : ArgumentsOf(command)) Join(kind, KindOf(*argument));
  for (const CLI::App* below : CommandsOf(command)) kind.words.push_back(below->get_name());
  return "    '" + path + "')\n" + OptionValues(OptionsOf(command)) +
         "      if [[ $cur == -* ]]; then\n        _gorbex_offer '" + Joined(optionNames, " ") +
         "'\n      else\n        " + Offer(kind) + "\n      fi\n      ;;\n";
}

std::string Branches(const CLI::App& app, const std::string& path) {
  std::string text = Branch(app, path);
  for (const CLI::App* command : CommandsOf(app)) {
    std::string below = path;
    below.append(path.empty() ? "" : " ").append(command->get_name());
    text += Branches(*command, below);
  }
  return text;
}

}  // namespace

std::string BashCompletion(const CLI::App& app) {
  std::string text = kBashStart;
  for (const CLI::App* command : CommandsOf(app)) {
    if (CommandsOf(*command).empty()) continue;
    const std::string& name = command->get_name();
    text.append("          ").append(name).append(") command=\"").append(name);
    text += " ${COMP_WORDS[i]}\" ;;\n";
  }
  text += "        esac\n        ;;\n    esac\n  done\n  case $command in\n";
  return text + Branches(app, "") + kBashEnd;
}

}  // namespace gorbex::cli
