#include <wx/evtloop.h>
#include <wx/evtloopsrc.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "platform/git/ask_pass.h"
#include "platform/linux/end_signal.h"
#include "platform/linux/host.h"
#include "ui/main_frame.h"
#include "ui/window_app.h"
#include "ui/window_arguments.h"

namespace {

using namespace gorbex;

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
    wxWindow* top = GetTopWindow();
    if (auto* frame = dynamic_cast<ui::MainFrame*>(top)) {
      frame->End();
    } else if (top != nullptr) {
      top->Close();
    }
    // A window that closed goes away when the program has nothing to do, which it is to notice.
    WakeUpIdle();
  }
  void OnWriteWaiting() override {}
  void OnExceptionWaiting() override {}

  std::unique_ptr<wxEventLoopSource> signals_;
};

}  // namespace

int main(int count, char** values) {
  const std::vector<std::string> words(values + std::min(count, 1), values + count);
  if (const auto answered = AnswerAskPass(words, Environment, std::cout)) return *answered;
  TakeFromEnvironment(kPasswordVariable);  // the window asks for it
  // A lost pipe or a file that may not grow is an error, not the end of the program.
  for (const int signal : {SIGPIPE, SIGXFSZ}) static_cast<void>(std::signal(signal, SIG_IGN));
  EndSignal::Obey();
  const auto arguments = ui::WindowArgumentsOf(words, ui::PrefixOption::Offered);
  if (const auto& reply = arguments.reply) {
    (reply->exitStatus == 0 ? std::cout : std::cerr) << reply->text;
    return reply->exitStatus;
  }
  if (!Environment("DISPLAY") && !Environment("WAYLAND_DISPLAY")) {
    std::cerr << "gorbexbuilder: there is no display; gorbex does the same without one\n";
    return 2;
  }
  const auto makeHost = [&arguments] { return std::make_unique<LinuxHost>(arguments.prefix); };
  wxApp::SetInstance(new LinuxApp(makeHost, arguments.typed));
  // The toolkit has no arguments to read.
  int first = 1;
  return wxEntry(first, values);
}
