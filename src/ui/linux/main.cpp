#include <wx/app.h>
#include <wx/msgdlg.h>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/git/ask_pass.h"
#include "platform/linux/platform.h"
#include "platform/linux/typed_path.h"
#include "platform/runtime_error.h"
#include "ui/event_loop_pump.h"
#include "ui/main_frame.h"
#include "ui/text_conversion.h"
#include "ui/window_dialogs.h"

namespace {

using namespace gorbex;

std::optional<std::string> Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

class PrefixPaths : public ui::HostPaths {
 public:
  explicit PrefixPaths(const Prefix& prefix) : prefix_(prefix) {}

  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override {
    try {
      return prefix_.WindowsPath(hostPath);
    } catch (const RuntimeError&) {
      return std::nullopt;
    }
  }

  [[nodiscard]] std::string HostPath(const std::string& programPath) const override {
    return prefix_.Existing(programPath).value_or("");
  }

 private:
  const Prefix& prefix_;
};

/// The program with everything it stands on, in the order in which it is taken down again.
class Session {
 public:
  explicit Session(const std::optional<std::string>& prefix)
      : platform_(Prefix::Choose(prefix, Environment)),
        paths_(platform_.GetPrefix()),
        dialogs_(paths_),
        program_(platform_.Services(events_), dialogs_) {}

  /// Shows the window and loads what the command line names.
  void Start(const std::string& typed) {
    auto* frame = new ui::MainFrame(program_);
    dialogs_.SetParent(frame);
    frame->Bind(wxEVT_DESTROY, [this, frame](wxWindowDestroyEvent& event) {
      if (event.GetEventObject() == frame) dialogs_.SetParent(nullptr);
      event.Skip();
    });
    program_.start.SetCommandLine(CommandLine(typed));
    program_.start.Form_Load();
    frame->Show();
  }

 private:
  [[nodiscard]] std::string CommandLine(const std::string& typed) const {
    if (typed.empty() || typed == "show") return typed;
    try {
      return ProgramPathOf(platform_.GetPrefix(), typed);
    } catch (const RuntimeError&) {
      // The program says that it cannot open it.
      return ui::FromWx(wxString::FromUTF8(typed));
    }
  }

  LinuxPlatform platform_;
  PrefixPaths paths_;
  ui::WindowDialogs dialogs_;
  ui::EventLoopPump events_;
  Program program_;
};

/// What the command line says.
struct Arguments {
  std::optional<std::string> prefix;
  std::string typed;                ///< empty, "show", or a file
  std::optional<int> exitStatus{};  ///< the program is done already
};

constexpr const char* kHelp =
    "usage: gorbexbuilder [--prefix DIR] [FILE.bpf | show]\n"
    "\n"
    "The main window of GorbexBuilder.\n"
    "  FILE.bpf      the build project file to open\n"
    "  show          tell how the compiler is registered\n"
    "  --prefix DIR  the folder that stands for a Windows installation\n"
    "                (also GORBEX_PREFIX, WINEPREFIX)\n"
    "  --help        this text\n"
    "  --version     the program's version\n";

Arguments Refused(const std::string& reason) {
  std::cerr << "gorbexbuilder: " << reason << "\n" << kHelp;
  return {{}, {}, 2};
}

Arguments ArgumentsOf(const std::vector<std::string>& words) {
  Arguments arguments;
  bool isNamed = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--help" || word == "-h") {
      std::cout << kHelp;
      arguments.exitStatus = 0;
    } else if (word == "--version") {
      std::cout << "gorbexbuilder " GORBEX_VERSION "\n";
      arguments.exitStatus = 0;
    } else if (word == "--prefix" && i + 1 < words.size()) {
      arguments.prefix = words[++i];
    } else if (word.starts_with("--prefix=")) {
      arguments.prefix = word.substr(word.find('=') + 1);
    } else if (word.starts_with("-") || isNamed) {
      return Refused("'" + word + "' is not understood");
    } else {
      arguments.typed = word;
      isNamed = true;
    }
    if (arguments.exitStatus) return arguments;
  }
  if (arguments.prefix && arguments.prefix->empty()) return Refused("--prefix is empty");
  if (!Environment("DISPLAY") && !Environment("WAYLAND_DISPLAY")) {
    std::cerr << "gorbexbuilder: there is no display; gorbex does the same without one\n";
    arguments.exitStatus = 2;
  }
  return arguments;
}

class WindowApp : public wxApp {
 public:
  explicit WindowApp(Arguments arguments) : arguments_(std::move(arguments)) {
    SetAppName("gorbexbuilder");
  }

  bool OnInit() override {
    for (const int signal : {SIGTERM, SIGHUP}) SetSignalHandler(signal, CloseWindow);
    try {
      session_ = std::make_unique<Session>(arguments_.prefix);
      session_->Start(arguments_.typed);
      return true;
    } catch (const std::exception& error) {
      wxMessageBox(wxString::FromUTF8(error.what()), "GorbexBuilder", wxOK | wxICON_ERROR);
      return false;
    }
  }

 private:
  // The system asks for the end as the user does.
  static void CloseWindow(int /*signal*/) {
    if (wxWindow* top = wxTheApp->GetTopWindow()) top->Close();
  }

  Arguments arguments_;
  std::unique_ptr<Session> session_;
};

}  // namespace

int main(int count, char** values) {
  if (const auto answered = AnswerAskPass(count, values, Environment, std::cout)) return *answered;
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  Arguments arguments = ArgumentsOf(std::vector<std::string>(values + 1, values + count));
  if (arguments.exitStatus) return *arguments.exitStatus;
  wxApp::SetInstance(new WindowApp(std::move(arguments)));
  // The toolkit has no arguments of its own to read.
  int first = 1;
  return wxEntry(first, values);
}
