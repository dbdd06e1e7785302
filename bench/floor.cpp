// The floor under loading and scanning a group: reads every project file and looks at the same
// files, and does nothing with them. floor PROJECTS.txt LOOKS.txt: one host path a line.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Lines(const char* path) {
  std::vector<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

std::size_t Read(const std::string& path, std::vector<char>& buffer) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  std::size_t total = 0;
  for (ssize_t count = 0; (count = read(file, buffer.data(), buffer.size())) > 0;) {
    total += static_cast<std::size_t>(count);
  }
  close(file);
  return total;
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) return 2;
  std::vector<char> buffer(std::size_t{1} << 16U);
  std::size_t bytes = 0;
  std::size_t found = 0;
  for (const auto& path : Lines(values[1])) bytes += Read(path, buffer);
  for (const auto& path : Lines(values[2])) {
    struct stat info {};
    if (stat(path.c_str(), &info) == 0) ++found;
  }
  std::printf("%zu bytes, %zu files\n", bytes, found);
}
