#include <windows.h>

#include <shellapi.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "platform/git/ask_pass.h"
#include "platform/windows/com_apartment.h"
#include "platform/windows/controls/activex_objects.h"
#include "platform/windows/host.h"
#include "platform/windows/library_search.h"
#include "platform/windows/wide_text.h"
#include "ui/window_app.h"
#include "ui/window_arguments.h"
#include "ui/windows/starter.h"

namespace {

using namespace gorbex;

/// The words of the command line in UTF-8, without the program's name.
std::vector<std::string> Words() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> result;
  for (int i = 1; words && i < count; ++i) result.push_back(Utf8FromWide(words.get()[i]));
  return result;
}

// The toolkit takes it for granted.
bool CanHaveWindow() {
  const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 1, 1, nullptr,
                                      nullptr, nullptr, nullptr);
  return window != nullptr && DestroyWindow(window) != 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*unused*/, char* /*bytes*/, int show) {
  SearchTrustedFoldersAlone();
  const std::vector<std::string> words = Words();
  if (const auto answered = AnswerAskPass(words, Environment, std::cout)) return *answered;
  TakeFromEnvironment(kPasswordVariable);  // the window asks for it
  const auto arguments = ui::WindowArgumentsOf(words, ui::PrefixOption::None);
  if (const auto& reply = arguments.reply) {
    ui::TellStarter(reply->text,
                    reply->exitStatus == 0 ? ui::StarterStream::Output : ui::StarterStream::Errors);
    return reply->exitStatus;
  }
  if (!CanHaveWindow()) {
    ui::TellStarter(
        "gorbexbuilder: no window can be shown here; gorbex does the same without one\n",
        ui::StarterStream::Errors);
    return 2;
  }
  const ComApartment apartment;
  const auto makeHost = [] {
    return std::make_unique<WindowsHost>(std::make_unique<ActiveXObjects>());
  };
  wxApp::SetInstance(new ui::WindowApp(makeHost, arguments.typed));
  return wxEntry(instance, nullptr, nullptr, show);
}
