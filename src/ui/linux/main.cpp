#include <wx/evtloop.h>
#include <wx/evtloopsrc.h>

#include <cctype>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <utility>

#include "platform/git/ask_pass.h"
#include "platform/linux/end_signal.h"
#include "platform/linux/platform.h"
#include "platform/linux/program_lock.h"
#include "platform/linux/typed_path.h"
#include "platform/runtime_error.h"
#include "ui/window_app.h"
#include "ui/window_arguments.h"

namespace {

using namespace gorbex;

std::optional<std::string> Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

// "*.b" as "*.[bB]": the toolkit's patterns tell the cases of letters apart. Programs have any name
// here.
std::string InAnyCase(const std::string& pattern) {
  if (pattern == "*.exe") return "*";
  std::string any;
  for (const char letter : pattern) {
    const auto byte = static_cast<unsigned char>(letter);
    const char lower = static_cast<char>(std::tolower(byte));
    const char upper = static_cast<char>(std::toupper(byte));
    any += lower == upper ? std::string(1, letter) : std::string{'[', lower, upper, ']'};
  }
  return any;
}

class PrefixHost : public ui::Host {
 public:
  explicit PrefixHost(const std::optional<std::string>& prefix)
      : platform_(Prefix::Choose(prefix, Environment)) {}

  PlatformServices Services(EventPump& events) override { return platform_.Services(events); }

  [[nodiscard]] std::optional<std::string> TypedPath(const std::string& typed) const override {
    try {
      return ProgramPathOf(platform_.GetPrefix(), typed);
    } catch (const RuntimeError&) {
      return std::nullopt;
    }
  }

  std::shared_ptr<void> BuildAlone() override {
    return ProgramLock::Try(ProgramLock::ToBuild(platform_.GetPrefix().Root()));
  }

  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override {
    try {
      return platform_.GetPrefix().WindowsPath(hostPath);
    } catch (const RuntimeError&) {
      return std::nullopt;
    }
  }

  [[nodiscard]] std::string FirstFolder() const override {
    return platform_.GetPrefix().Existing("C:\\").value_or("");
  }

  [[nodiscard]] std::string FilePattern(const std::string& pattern) const override {
    return InAnyCase(pattern);
  }

 private:
  LinuxPlatform platform_;
};

/// The system asks for the end as the user does. The toolkit's own way to hear of it waits for the
/// next event, which may never come.
class LinuxApp : public ui::WindowApp, private wxEventLoopSourceHandler {
 public:
  using WindowApp::WindowApp;

 private:
  void OnEventLoopEnter(wxEventLoopBase* loop) override {
    WindowApp::OnEventLoopEnter(loop);
    if (signals_) return;
    signals_.reset(loop->AddSourceForFD(EndSignal::Listen(), this, wxEVENT_SOURCE_INPUT));
  }

  void OnReadWaiting() override {
    // A user who does not want to close now may be asked again.
    static_cast<void>(EndSignal::Listen());
    if (wxWindow* top = GetTopWindow()) top->Close();
    // A window that closed goes away when the program has nothing to do, which it is to notice.
    WakeUpIdle();
  }
  void OnWriteWaiting() override {}
  void OnExceptionWaiting() override {}

  std::unique_ptr<wxEventLoopSource> signals_;
};

}  // namespace

int main(int count, char** values) {
  if (const auto answered = AnswerAskPass(count, values, Environment, std::cout)) return *answered;
  // The window asks for it; what it starts must not inherit it.
  unsetenv("GORBEX_SCC_PASSWORD");
  // A lost pipe or a file that may not grow is an error, not the end of the program.
  for (const int signal : {SIGPIPE, SIGXFSZ}) static_cast<void>(std::signal(signal, SIG_IGN));
  EndSignal::Obey();
  const auto arguments =
      ui::WindowArgumentsOf({values + 1, values + count}, ui::PrefixOption::Offered);
  if (const auto& reply = arguments.reply) {
    (reply->exitStatus == 0 ? std::cout : std::cerr) << reply->text;
    return reply->exitStatus;
  }
  if (!Environment("DISPLAY") && !Environment("WAYLAND_DISPLAY")) {
    std::cerr << "gorbexbuilder: there is no display; gorbex does the same without one\n";
    return 2;
  }
  const auto makeHost = [&arguments] { return std::make_unique<PrefixHost>(arguments.prefix); };
  wxApp::SetInstance(new LinuxApp(makeHost, arguments.typed));
  // The toolkit has no arguments to read.
  int first = 1;
  return wxEntry(first, values);
}
