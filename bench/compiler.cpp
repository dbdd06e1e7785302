// A compiler that compiles nothing: PROJECT /make /out LOG writes to the log that the project was
// built. A log on drive C: is in the prefix. Without a log it is a mailer that takes what it is
// given.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

std::string HostPath(std::string path) {
  if (path.rfind("C:", 0) != 0) return path;
  std::replace(path.begin(), path.end(), '\\', '/');
  const char* prefix = std::getenv("GORBEX_PREFIX");
  return std::string(prefix == nullptr ? "." : prefix) + "/drive_c" + path.substr(2);
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
  std::FILE* file = std::fopen(HostPath(log).c_str(), "w");
  if (file == nullptr) return 1;
  std::fputs("Build of 'Part.dll' succeeded.\r\n", file);
  return std::fclose(file) == 0 ? 0 : 1;
}
