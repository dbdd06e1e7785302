#include "ui/window_arguments.h"

namespace gorbex::ui {
namespace {

std::string Help(PrefixOption prefix) {
  const bool isOffered = prefix == PrefixOption::Offered;
  std::string text = "usage: gorbexbuilder ";
  text += isOffered ? "[--prefix DIR] " : "";
  text +=
      "[FILE.bpf | show]\n"
      "\n"
      "The main window of GorbexBuilder.\n"
      "  FILE.bpf      the build project file to open\n"
      "  show          tell how the compiler is registered\n";
  if (isOffered) {
    text +=
        "  --prefix DIR  the folder that serves as a Windows installation\n"
        "                (also GORBEX_PREFIX, WINEPREFIX)\n";
  }
  return text +
         "  --help        this text\n"
         "  --version     the program's version\n";
}

WindowArguments Refused(const std::string& reason, PrefixOption prefix) {
  return {{}, {}, {{2, "gorbexbuilder: " + reason + "\n" + Help(prefix)}}};
}

}  // namespace

WindowArguments WindowArgumentsOf(const std::vector<std::string>& words, PrefixOption prefix) {
  const bool isOffered = prefix == PrefixOption::Offered;
  WindowArguments arguments;
  bool isNamed = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--help" || word == "-h") return {{}, {}, {{0, Help(prefix)}}};
    if (word == "--version") return {{}, {}, {{0, "gorbexbuilder " GORBEX_VERSION "\n"}}};
    if (isOffered && word == "--prefix" && i + 1 < words.size()) {
      arguments.prefix = words[++i];
    } else if (isOffered && word.starts_with("--prefix=")) {
      arguments.prefix = word.substr(word.find('=') + 1);
    } else if (word.starts_with("-") || isNamed) {
      return Refused("'" + word + "' is not understood", prefix);
    } else {
      arguments.typed = word;
      isNamed = true;
    }
  }
  if (arguments.prefix && arguments.prefix->empty()) return Refused("--prefix is empty", prefix);
  return arguments;
}

}  // namespace gorbex::ui
