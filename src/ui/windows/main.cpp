#include <windows.h>

#include <shellapi.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "platform/git/ask_pass.h"
#include "platform/runtime_error.h"
#include "platform/windows/child_process.h"
#include "platform/windows/com_apartment.h"
#include "platform/windows/controls/activex_objects.h"
#include "platform/windows/library_search.h"
#include "platform/windows/platform.h"
#include "platform/windows/program_lock.h"
#include "platform/windows/typed_path.h"
#include "platform/windows/wide_text.h"
#include "ui/window_app.h"
#include "ui/window_arguments.h"
#include "ui/windows/starter.h"

namespace {

using namespace gorbex;

std::optional<std::string> Environment(const char* name) {
  const auto value = EnvironmentVariable(WideFromUtf8(name).c_str());
  if (!value || value->empty()) return std::nullopt;
  return Utf8FromWide(*value);
}

class WindowsHost : public ui::Host {
 public:
  PlatformServices Services(EventPump& events) override { return platform_.Services(events); }

  [[nodiscard]] std::optional<std::string> TypedPath(const std::string& typed) const override {
    try {
      return ProgramPathOf(typed);
    } catch (const RuntimeError&) {
      return std::nullopt;
    }
  }

  std::shared_ptr<void> BuildAlone() override {
    return ProgramLock::Try(ProgramLock::ToBuild(platform_.ProgramFolder()));
  }

  [[nodiscard]] std::optional<std::string> ProgramPath(const std::string& hostPath) const override {
    return TypedPath(hostPath);
  }

  void TellWhySessionWaits(wxWindow& window, const wxString& why) override {
    ShutdownBlockReasonCreate(window.GetHWND(), why.wc_str());
  }

  // The system remembers where its dialogs were.
  [[nodiscard]] std::string FirstFolder() const override { return {}; }

  [[nodiscard]] std::string FilePattern(const std::string& pattern) const override {
    return pattern;
  }

 private:
  WindowsPlatform platform_{std::make_unique<ActiveXObjects>()};
};

/// All words of the command line in UTF-8, the program's name first.
std::vector<std::string> Words() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> result;
  for (int i = 0; words && i < count; ++i) result.push_back(Utf8FromWide(words.get()[i]));
  return result;
}

// The toolkit takes it for granted.
bool CanHaveWindow() {
  const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 1, 1, nullptr,
                                      nullptr, nullptr, nullptr);
  return window != nullptr && DestroyWindow(window) != 0;
}

std::optional<int> AnsweredForGit(const std::vector<std::string>& words) {
  std::vector<const char*> pointers;
  pointers.reserve(words.size());
  for (const auto& word : words) pointers.push_back(word.c_str());
  return AnswerAskPass(static_cast<int>(pointers.size()), pointers.data(), Environment, std::cout);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*unused*/, char* /*bytes*/, int show) {
  SearchTrustedFoldersAlone();
  std::vector<std::string> words = Words();
  if (const auto answered = AnsweredForGit(words)) return *answered;
  // The window asks for it; what it starts must not inherit it.
  SetEnvironmentVariableW(L"GORBEX_SCC_PASSWORD", nullptr);
  if (!words.empty()) words.erase(words.begin());
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
  const auto makeHost = [] { return std::make_unique<WindowsHost>(); };
  wxApp::SetInstance(new ui::WindowApp(makeHost, arguments.typed));
  return wxEntry(instance, nullptr, nullptr, show);
}
