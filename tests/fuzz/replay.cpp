// Stands in for the fuzzing library where that is not at hand: reads every file of the folders
// named on the command line, then a fixed number of inputs made from them, always the same ones. An
// input that ends the program is left beside it.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/fuzz/target.h"

namespace {

constexpr int kMadeInputs = 3000;
constexpr std::size_t kLongestInput = 65'536;

std::string program;
std::string input;

void KeepInput(int signal) {
  std::ofstream(program + ".failed", std::ios::binary) << input;
  std::cerr << "The input is in " << program << ".failed" << std::endl;
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void Run() {
  // Copied, so that a look past its end is seen.
  const std::vector<std::uint8_t> bytes(input.begin(), input.end());
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

std::vector<std::string> InputsOf(const std::filesystem::path& folder) {
  std::error_code absent;
  using std::filesystem::directory_iterator;
  const std::set<std::filesystem::path> files(directory_iterator(folder, absent),
                                              directory_iterator());
  std::vector<std::string> inputs;
  for (const auto& file : files) {
    std::ifstream in(file, std::ios::binary);
    inputs.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  return inputs;
}

/// Makes inputs that are nearly right, the kind that readers stumble over.
class Maker {
 public:
  explicit Maker(const std::vector<std::string>& seeds) : seeds_(seeds) {}

  std::string Make() {
    std::string made = AnySeed();
    for (auto changes = Number(5) + 1; changes > 0; --changes) Change(made);
    made.resize(std::min(made.size(), kLongestInput));
    return made;
  }

 private:
  // The library's distributions differ between systems.
  std::size_t Number(std::size_t below) { return below == 0 ? 0 : random_() % below; }
  const std::string& AnySeed() { return seeds_[Number(seeds_.size())]; }

  void Change(std::string& text) {
    const auto at = Number(text.size() + 1);
    const auto length = Number(std::min<std::size_t>(text.size() - at, 64) + 1);
    const std::string& other = AnySeed();
    const std::string pieces[] = {"", text.substr(at, length),
                                  std::string(1, static_cast<char>(Number(256))),
                                  other.substr(Number(other.size() + 1), Number(64))};
    text.replace(at, Number(2) * length, pieces[Number(std::size(pieces))]);
  }

  const std::vector<std::string>& seeds_;
  std::mt19937 random_;
};

}  // namespace

int main(int count, char** words) {
  program = words[0];
  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL}) std::signal(signal, KeepInput);
  std::vector<std::string> seeds;
  for (int i = 1; i < count; ++i) {
    for (auto& seed : InputsOf(words[i])) seeds.push_back(std::move(seed));
  }
  if (seeds.empty()) {
    std::cerr << "There is no input in the folders named" << std::endl;
    return 2;
  }
  seeds.emplace_back();
  for (const auto& seed : seeds) {
    input = seed;
    Run();
  }
  Maker maker(seeds);
  for (int i = 0; i < kMadeInputs; ++i) {
    input = maker.Make();
    Run();
  }
  return 0;
}
