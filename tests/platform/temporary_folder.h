#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

namespace gorbex::test {

/// A folder of the host that is gone again after the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    const auto parent = std::filesystem::temp_directory_path();
    do {
      path_ = parent / ("gorbex-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TemporaryFolder() {
    // A process that a test left running may still use it.
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  /// Writes a host file below the folder, with the folders above it.
  void Put(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }

  [[nodiscard]] std::string Get(const std::string& name) const {
    std::ifstream in(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::filesystem::path path_;
};

/// Makes a folder the current one until the end of the scope.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::filesystem::path& folder) {
    std::filesystem::current_path(folder);
  }
  ~CurrentFolder() { std::filesystem::current_path(before_); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace gorbex::test
