#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <functional>

#include "platform/linux/file_system.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/memory_file_system.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

int NumberOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

struct InMemory {
  Journal journal;
  MemoryFileSystem files{journal};
};

struct OnLinux {
  TemporaryFolder folder;
  Prefix prefix{folder.Path()};
  LinuxFileSystem files{prefix};
};

template <typename Bench>
class Files : public testing::Test {
 protected:
  Bench bench_;
  FileSystem& files_ = bench_.files;
};

using Benches = testing::Types<InMemory, OnLinux>;
TYPED_TEST_SUITE(Files, Benches);

TYPED_TEST(Files, KeepsEveryByteUnderAnySpellingOfThePath) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  this->files_.CreateFolder("C:\\Gr\xFC\xDF");
  this->files_.Write("C:\\Gr\xFC\xDF\\Core.vbp", "old");
  this->files_.Write("C:/gr\xDC\xDF/x/../CORE.VBP", bytes);
  this->files_.Append("c:\\Gr\xFC\xDF\\.\\core.vbp", "more");
  EXPECT_EQ(this->files_.Read("\\Gr\xFC\xDF\\Core.vbp"), bytes + "more");
  const auto info = this->files_.Look("C:\\GR\xDC\xDF\\core.VBP").value();
  EXPECT_TRUE(info.lastWrite);
  EXPECT_EQ(info.size, 260U);
  EXPECT_EQ(info.attributes, file_attribute::kArchive);
}

TYPED_TEST(Files, ListsInOneOrder) {
  this->files_.CreateFolder("C:\\L");
  this->files_.CreateFolder("C:\\L\\m");
  for (const char* file : {"C:\\L\\b", "C:\\L\\_", "C:\\L\\C", "C:\\L\\a", "C:\\l\\A"}) {
    this->files_.Append(file, "");
  }
  std::string names;
  for (const auto& entry : this->files_.List("C:\\L")) {
    names += entry.name + (entry.isFolder ? "/" : "");
  }
  EXPECT_EQ(names, "abCm/_");
}

TYPED_TEST(Files, RaisesTheRightNumberAndChangesNothing) {
  auto& files = this->files_;
  files.CreateFolder("C:\\A");
  files.Write("C:\\A\\f", "f");
  files.Write("C:\\A\\ro", "ro");
  files.SetAttributes("C:\\A\\ro", file_attribute::kReadOnly | file_attribute::kArchive);
  const std::pair<int, std::function<void()>> cases[] = {
      {53, [&] { (void)files.Read("C:\\A\\no"); }},
      {76, [&] { (void)files.Read("C:\\No\\f"); }},
      {75, [&] { (void)files.Read("C:\\A"); }},
      {52, [&] { (void)files.Read(""); }},
      {76, [&] { (void)files.List("C:\\A\\f"); }},
      {76, [&] { files.Write("C:\\No\\f", ""); }},
      {75, [&] { files.Write("C:\\A\\RO", ""); }},
      {52, [&] { files.Write("C:\\A\\a:b", ""); }},
      {52, [&] { files.Write(std::string("C:\\A\\a\0b", 8), ""); }},
      {75, [&] { files.Append("C:\\A\\ro", "x"); }},
      {75, [&] { files.Remove("C:\\A\\ro"); }},
      {53, [&] { files.Remove("C:\\A\\no"); }},
      {53, [&] { files.SetAttributes("C:\\A\\no", 0); }},
      {75, [&] { files.CreateFolder("C:\\a"); }},
      {76, [&] { files.CreateFolder("C:\\No\\Deep"); }},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(NumberOf(one.second), one.first) << "case " << &one - cases;
  }
  EXPECT_EQ(files.Read("C:\\A\\f") + files.Read("C:\\A\\ro"), "fro");
  EXPECT_EQ(files.List("C:\\A").size(), 2U);
  EXPECT_EQ(files.Look("C:\\A\\ro")->attributes, 33U);
  files.SetAttributes("C:\\A\\ro", file_attribute::kArchive);
  files.Write("C:\\A\\ro", "new");
  files.Remove("C:\\A\\RO");
  EXPECT_FALSE(files.Look("C:\\A\\ro"));
}

TEST(LinuxFiles, KeepModeAndLinksAndLeaveNothingBehind) {
  OnLinux bench;
  bench.folder.Put("drive_c/A/real", "old");
  const auto real = bench.folder.Path() / "drive_c/A/real";
  chmod(real.c_str(), 0640);
  fs::create_symlink("A/real", bench.folder.Path() / "drive_c/link");
  fs::create_symlink("A/later", bench.folder.Path() / "drive_c/dangling");
  bench.files.Write("C:\\LINK", "new");
  bench.files.Write("C:\\dangling", "made");
  EXPECT_EQ(bench.folder.Get("drive_c/A/real"), "new");
  EXPECT_EQ(bench.folder.Get("drive_c/A/later"), "made");
  EXPECT_TRUE(fs::is_symlink(bench.folder.Path() / "drive_c/link"));
  EXPECT_EQ(static_cast<int>(fs::status(real).permissions()), 0640);

  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit small{1024, old.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  const int number = NumberOf([&] { bench.files.Write("C:\\A\\real", std::string(5000, 'x')); });
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(number, 61);
  EXPECT_EQ(bench.folder.Get("drive_c/A/real"), "new");
  EXPECT_EQ(bench.files.List("C:\\A").size(), 2U);
}

TEST(LinuxFiles, TouchPlainFilesAlone) {
  OnLinux bench;
  mkfifo((bench.folder.Path() / "drive_c/pipe").c_str(), 0600);
  EXPECT_EQ(NumberOf([&] { (void)bench.files.Read("C:\\pipe"); }), 75);
  EXPECT_EQ(NumberOf([&] { bench.files.Write("C:\\pipe", ""); }), 75);
  EXPECT_EQ(NumberOf([&] { bench.files.Append("C:\\pipe", ""); }), 75);
  EXPECT_EQ(NumberOf([&] { (void)bench.files.Read("Z:\\dev\\null"); }), 75);
  EXPECT_NE(bench.files.Read("Z:\\proc\\self\\status"), "") << "a file that says its size is 0";
}

TEST(LinuxFiles, GiveTheTimeOfTheHost) {
  OnLinux bench;
  bench.files.Write("C:\\f", "");
  const timespec times[2] = {{0, 0}, {1'000'000'000, 123'456'789}};
  utimensat(AT_FDCWD, (bench.folder.Path() / "drive_c/f").c_str(), times, 0);
  EXPECT_EQ(bench.files.Look("C:\\f")->lastWrite, FileTime{126'444'736'001'234'567U});
}

}  // namespace
}  // namespace gorbex::test
