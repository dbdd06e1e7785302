#include "tests/platform/chatty_tool.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <thread>

// A tool that a test runs: chatty_tool report TEXT... | much | endless | sleep | leave | stay |
// tick
namespace {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "<none>";
}

int Report(int count, char** arguments) {
  for (int i = 2; i < count; ++i) std::cout << arguments[i] << '|';
  std::cout << Variable("SET") << '|' << Variable("GONE") << '|'
            << std::filesystem::current_path().filename().string() << '|'
            << (std::cin.get() == EOF ? 0 : 1);
  std::cerr << 'e';
  return 7;
}

int SayMuch() {
  const std::string much(3'000'000, 'x');
  std::cerr << much << std::flush;
  std::cout << much << std::flush;
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  return 0;
}

int NeverEnd() {
  const std::string much(1'000'000, 'x');
  while (std::cout << much) {
  }
  return 1;
}

void Tick() {
  for (int i = 0; i < 200; ++i) {
    std::ofstream("ticks", std::ios::app) << '.';
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
  }
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view task(count > 1 ? arguments[1] : "");
  if (task == "report") return Report(count, arguments);
  if (task == "much") return SayMuch();
  if (task == "endless") return NeverEnd();
  if (task == "stay") gorbex::test::StartAndLeave(arguments[0], "tick");
  if (task == "tick") Tick();
  if (task == "leave") gorbex::test::StartAndLeave(arguments[0], "sleep");
  if (task == "sleep" || task == "stay") std::this_thread::sleep_for(std::chrono::seconds(5));
  return 0;
}
