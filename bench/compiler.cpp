// A compiler that compiles nothing: PROJECT /make /out LOG writes to the log that the project was
// built. A log on drive C: is in the prefix. Without a log it is a mailer that takes what it is
// given. BENCH_WAIT and BENCH_WORK say for how many milliseconds it sleeps, or computes.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <thread>

namespace {

std::string HostPath(std::string path) {
  if (path.rfind("C:", 0) != 0) return path;
  std::replace(path.begin(), path.end(), '\\', '/');
  const char* prefix = std::getenv("GORBEX_PREFIX");
  return std::string(prefix == nullptr ? "." : prefix) + "/drive_c" + path.substr(2);
}

std::chrono::milliseconds Milliseconds(const char* variable) {
  const char* text = std::getenv(variable);
  return std::chrono::milliseconds(text == nullptr ? 0 : std::atoi(text));
}

// Of processor time, which others who compute do not shorten.
void Compute(std::chrono::milliseconds time) {
  const std::clock_t end = std::clock() + time.count() * CLOCKS_PER_SEC / 1000;
  while (std::clock() < end) {
  }
}

int TakeMail() {
  while (std::getchar() != EOF) {
  }
  return 0;
}

}  // namespace

int main(int count, char** values) {
  const char* log = nullptr;
  for (int i = 1; i + 1 < count; ++i) {
    if (std::strcmp(values[i], "/out") == 0) log = values[i + 1];
  }
  if (log == nullptr) return TakeMail();
  std::this_thread::sleep_for(Milliseconds("BENCH_WAIT"));
  Compute(Milliseconds("BENCH_WORK"));
  std::FILE* file = std::fopen(HostPath(log).c_str(), "w");
  if (file == nullptr) return 1;
  std::fputs("Build of 'Part.dll' succeeded.\r\n", file);
  return std::fclose(file) == 0 ? 0 : 1;
}
