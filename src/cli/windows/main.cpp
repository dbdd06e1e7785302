#include <windows.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/cli.h"
#include "cli/windows/console.h"
#include "platform/git/ask_pass.h"
#include "platform/runtime_error.h"
#include "platform/windows/host.h"
#include "platform/windows/library_search.h"
#include "platform/windows/wide_text.h"

namespace {

std::unique_ptr<gorbex::Host> HostOf(const std::optional<std::string>& prefix) {
  if (!prefix) return std::make_unique<gorbex::WindowsHost>();
  throw gorbex::RuntimeError::WithDescription(gorbex::ErrorNumber::InvalidCall,
                                              "--prefix is for systems other than Windows");
}

std::optional<std::string> ReadSecret() {
  const gorbex::cli::ConsoleMode hidden(STD_INPUT_HANDLE, 0, ENABLE_ECHO_INPUT);
  std::string line;
  return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

// The status, unless the output is lost.
int StatusWithOutput(int status) {
  std::cout.flush();
  if (std::cout || status != 0) return status;
  std::cerr << "gorbex: the output could not be written\n";
  return static_cast<int>(gorbex::cli::ExitStatus::Unusable);
}

int Run(const std::vector<std::string>& arguments) {
  const bool asks = gorbex::cli::IsConsole(STD_INPUT_HANDLE);
  const bool animates = gorbex::cli::IsConsole(STD_ERROR_HANDLE);
  const gorbex::cli::ConsoleMode outputCodes(STD_OUTPUT_HANDLE, gorbex::cli::kCodes, 0);
  const gorbex::cli::ConsoleMode errorCodes(STD_ERROR_HANDLE, gorbex::cli::kCodes, 0);
  const gorbex::cli::Streams streams{
      std::cin,
      std::cout,
      std::cerr,
      asks && animates,
      animates,
      errorCodes.IsSet(),
      ReadSecret,
      gorbex::TakeFromEnvironment(gorbex::kPasswordVariable),
      {},
      outputCodes.IsSet() && gorbex::cli::WantsColours(gorbex::Environment),
      gorbex::cli::CiSystemOf(gorbex::Environment),
      nullptr,
      nullptr,
      gorbex::cli::SizeOfConsole};
  return StatusWithOutput(gorbex::cli::RunCli(arguments, streams, HostOf));
}

}  // namespace

int wmain(int count, wchar_t** values) {
  gorbex::SearchTrustedFoldersAlone();
  std::vector<std::string> arguments(static_cast<std::size_t>(count));
  std::transform(values, values + count, arguments.begin(), gorbex::Utf8FromWide);
  if (!arguments.empty()) arguments.erase(arguments.begin());
  const auto answered = gorbex::AnswerAskPass(arguments, gorbex::Environment, std::cout);
  if (answered) return *answered;
  std::ios::sync_with_stdio(false);
  const gorbex::cli::ConsoleStream input(std::cin, STD_INPUT_HANDLE);
  const gorbex::cli::ConsoleStream output(std::cout, STD_OUTPUT_HANDLE);
  const gorbex::cli::ConsoleStream errors(std::cerr, STD_ERROR_HANDLE);
  return Run(arguments);
}
