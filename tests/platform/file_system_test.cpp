#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "platform/code_page.h"
#include "system_bench.h"
#include "tests/platform/outcome.h"
#include "tests/support/memory_file_system.h"

namespace gorbex::test {
namespace {

using namespace std::string_literals;

struct FilesInMemory {
  Journal journal;
  MemoryFileSystem files{journal};
  std::string root = "C:\\";
};

template <typename Bench>
class Files : public testing::Test {
 protected:
  /// The full path of a name below the folder that the test may change.
  [[nodiscard]] std::string At(const std::string& name) const { return bench_.root + name; }

  Bench bench_;
  FileSystem& files_ = bench_.files;
};

using FileBenches = testing::Types<FilesInMemory, FilesOnSystem>;
TYPED_TEST_SUITE(Files, FileBenches);

TYPED_TEST(Files, KeepsEveryByteUnderAnySpellingOfThePath) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  this->files_.CreateFolder(this->At("Gr\xFC\xDF"));
  this->files_.Write(this->At("Gr\xFC\xDF\\Core.vbp"), "old");
  auto slashes = this->At("gr\xDC\xDF/x/../CORE.VBP");
  std::replace(slashes.begin(), slashes.end(), '\\', '/');
  this->files_.Write(slashes, bytes);
  this->files_.Append(LowerCase(this->At("Gr\xFC\xDF\\.\\core.vbp")), "more");
  const auto withoutDrive = this->At("Gr\xFC\xDF\\Core.vbp").substr(2);
  EXPECT_EQ(this->files_.Read(withoutDrive), bytes + "more");
  const auto info = this->files_.Look(this->At("GR\xDC\xDF\\core.VBP")).value();
  EXPECT_TRUE(info.lastWrite);
  EXPECT_EQ(info.size, 260U);
  EXPECT_EQ(info.attributes, file_attribute::kArchive);
  const auto looks = this->files_.LookIn(
      this->At("gr\xFC\xDF"),
      {"Core.vbp", "core.VBP", "none.cls", "..\\Gr\xFC\xDF\\Core.vbp", "", "."});
  std::string sizes;
  for (const auto& look : looks) {
    sizes += look ? (look->isFolder ? "folder " : std::to_string(look->size) + " ") : "none ";
  }
  EXPECT_EQ(sizes, "260 260 none 260 folder folder ");
}

TYPED_TEST(Files, ListsInOneOrder) {
  this->files_.CreateFolder(this->At("L"));
  this->files_.CreateFolder(this->At("L\\m"));
  for (const char* file : {"L\\b", "L\\_", "L\\C", "L\\a", "l\\A"}) {
    this->files_.Append(this->At(file), "");
  }
  std::string names;
  for (const auto& entry : this->files_.List(this->At("L"))) {
    names += entry.name + (entry.isFolder ? "/" : "");
  }
  EXPECT_EQ(names, "abCm/_");
}

TYPED_TEST(Files, RaisesTheRightNumberAndChangesNothing) {
  auto& files = this->files_;
  files.CreateFolder(this->At("A"));
  files.Write(this->At("A\\f"), "f");
  files.Write(this->At("A\\ro"), "ro");
  files.SetAttributes(this->At("A\\ro"), file_attribute::kReadOnly | file_attribute::kArchive);
  const std::pair<int, std::function<void()>> cases[] = {
      {53, [&] { (void)files.Read(this->At("A\\no")); }},
      {76, [&] { (void)files.Read(this->At("No\\f")); }},
      {75, [&] { (void)files.Read(this->At("A")); }},
      {52, [&] { (void)files.Read(""); }},
      {76, [&] { (void)files.List(this->At("A\\f")); }},
      {76, [&] { files.Write(this->At("No\\f"), ""); }},
      {75, [&] { files.Write(this->At("A\\RO"), ""); }},
      {52, [&] { files.Write(this->At("A\\a:b"), ""); }},
      {52, [&] { files.Write(this->At("A\\") + "a\0b"s, ""); }},
      {75, [&] { files.Append(this->At("A\\ro"), "x"); }},
      {75, [&] { files.Remove(this->At("A\\ro")); }},
      {53, [&] { files.Remove(this->At("A\\no")); }},
      {53, [&] { files.SetAttributes(this->At("A\\no"), 0); }},
      {75, [&] { files.CreateFolder(this->At("a")); }},
      {76, [&] { files.CreateFolder(this->At("No\\Deep")); }},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(NumberOf(one.second), one.first) << "case " << &one - cases;
  }
  EXPECT_EQ(files.Read(this->At("A\\f")) + files.Read(this->At("A\\ro")), "fro");
  EXPECT_EQ(files.List(this->At("A")).size(), 2U);
  EXPECT_EQ(files.Look(this->At("A\\ro"))->attributes, 33U);
  files.SetAttributes(this->At("A\\ro"), file_attribute::kArchive);
  files.Write(this->At("A\\ro"), "new");
  files.Remove(this->At("A\\RO"));
  EXPECT_FALSE(files.Look(this->At("A\\ro")));
}

}  // namespace
}  // namespace gorbex::test
