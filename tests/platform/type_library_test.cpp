#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <tuple>
#include <vector>

#include "platform/component/library_file.h"
#include "platform/component/library_inspector.h"
#include "platform/component/type_library.h"
#include "system_bench.h"
#include "tests/support/memory_file_system.h"

namespace gorbex::test {
namespace {

constexpr const char* kDefault = " ";
constexpr const char* kFirst = "{C1A55E50-0011-2233-4455-66778899AA01}";
constexpr const char* kMain = "{C1A55E50-0011-2233-4455-66778899AA03}";

std::string Made(const std::string& name) {
  std::ifstream in(std::string(TYPE_LIBRARIES) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string Answer(const std::string& bytes) {
  Journal journal;
  MemoryFileSystem files(journal);
  files.AddFile("C:\\Part.dll", bytes);
  const auto library = TypeLibraryOf(files, "C:\\Part.dll");
  const auto guid = library ? OwnInterfaceOf(*library) : "";
  return guid.empty() ? kDefault : guid;
}

std::uint32_t NumberAt(const std::string& bytes, std::size_t offset) {
  std::uint32_t number = 0;
  for (auto i = offset + 4; i-- > offset;)
    number = number << 8U | static_cast<unsigned char>(bytes.at(i));
  return number;
}

std::string With(std::string bytes, std::size_t offset, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) bytes.at(offset + i) = static_cast<char>(number >> i * 8);
  return bytes;
}

std::string Described(const std::string& bytes) {
  const auto library = ReadTypeLibrary(bytes);
  if (!library) return "unreadable";
  std::ostringstream out;
  out << library->guid << ' ' << library->major << '.' << library->minor << ' ' << library->lcid
      << ' ' << library->flags << ' ' << library->name << ' ' << library->helpString << '\n';
  for (const auto& type : library->types) {
    out << static_cast<int>(type.kind) << ' ' << type.guid << ' ' << std::hex << type.flags
        << std::dec << ' ' << type.name;
    if (type.defaultInterface) out << " -> " << *type.defaultInterface;
    out << '\n';
  }
  return out.str();
}

TEST(TypeLibrary, TellsWhatItsMakerWrote) {
  const std::string classes =
      R"({C1A55E50-0011-2233-4455-66778899AA19} 2.5 1031 1 Classes Sample classes
3 {C1A55E50-0011-2233-4455-66778899AA01} 100 IFirst
4 {C1A55E50-0011-2233-4455-66778899AA02} 1000 _Events
4 {C1A55E50-0011-2233-4455-66778899AA03} 1150 _Main
5 {C1A55E50-0011-2233-4455-66778899AA04} 22 Main -> 2
5 {C1A55E50-0011-2233-4455-66778899AA05} 0 Unmarked -> 0
)";
  EXPECT_EQ(Described(Made("classes.tlb")), classes);
  EXPECT_EQ(Described(Made("classes64.tlb")), classes);

  const auto kinds = ReadTypeLibrary(Made("kinds.tlb")).value_or(TypeLibrary{});
  EXPECT_EQ(kinds.minor, 65535);
  std::string found;
  for (const auto& type : kinds.types) found += std::to_string(static_cast<int>(type.kind));
  EXPECT_EQ(found, "60616762");
}

TEST(OwnInterface, IsNoneInALibraryThatContradictsItself) {
  const auto good = Made("classes.tlb");
  const auto segment = [&](std::size_t index) { return NumberAt(good, 84 + 5 * 4 + index * 16); };
  const auto types = segment(0);
  const auto references = segment(3);
  const auto thirdGuid = segment(5) + NumberAt(good, types + 244);
  const auto noGuid = std::string(good).replace(thirdGuid, 16, 16, '\0');
  const std::tuple<const char*, std::string, const char*> cases[] = {
      {"nothing changed", With(good, 0x18, 1), kMain},
      {"default interface of another library", With(good, references + 32, 201), kFirst},
      {"default interface without a GUID", noGuid, kFirst},
      {"no such default interface", With(good, references + 32, 500), kDefault},
      {"default interface between two types", With(good, references + 32, 152), kDefault},
      {"circle of interfaces", With(With(good, references + 12, 0), types + 376, 0xFFFF), kDefault},
      {"unknown kind of type", With(good, types, 9), kDefault},
      {"more types than the file holds", With(good, 0x20, 0xFFFFFFFF), kDefault},
      {"name of the library outside", With(good, 0x38, 0x10000000), kDefault},
      {"another format", "SLTG" + good.substr(4), kDefault},
      {"no program", "MZ" + good.substr(2), kDefault},
      {"empty", "", kDefault},
  };
  for (const auto& [what, bytes, answer] : cases) EXPECT_EQ(Answer(bytes), answer) << what;
}

TEST(OwnInterface, IsNoneInAFileThatEndsEarly) {
  for (const auto* name : {"classes.tlb", "twice32.dll", "twice64.dll"}) {
    const auto good = Made(name);
    // Bytes after the help strings of a bare library are not read.
    const std::size_t strings = 84 + 5 * 4 + 8 * 16;
    const auto needed = good.starts_with("MZ")
                            ? good.size()
                            : NumberAt(good, strings) + NumberAt(good, strings + 4);
    ASSERT_GT(needed, 1000U);
    for (std::size_t length = 0; length < needed; ++length) {
      ASSERT_EQ(Answer(good.substr(0, length)), kDefault) << name << " cut to " << length;
    }
  }
}

constexpr const char* kOwn = "{C0B1E500-0011-2233-4455-66778899AA02}";
constexpr const char* kClock = "{E7E47500-0011-2233-4455-66778899AA01}";

TEST(ComponentInspector, AnswersAnInterfaceThatTheComponentDefines) {
  const InspectorOnSystem bench;
  const std::map<std::string, std::vector<std::string>> cases = {
      {kMain, {"\\classes.tlb", "\\CLASSES64.TLB", "\\twice32.dll\\3", "\\twice64.dll\\3"}},
      {kOwn, {"\\copies.tlb"}},
      {kClock, {"\\events.tlb", "\\twice32.dll", "\\twice32.dll\\2", "\\twice64.dll"}},
      {kDefault,
       {"\\kinds.tlb", "\\stdole2.tlb", "\\none32.dll", "\\none64.dll", "\\twice32.dll\\9",
        "\\twice32.dll\\65539", "\\twice32.dll\\3x", "\\absent.dll", ""}},
  };
  for (const auto& [answer, names] : cases) {
    for (const auto& name : names)
      EXPECT_EQ(bench.inspector.InterfaceGuid(bench.libraries + name, kDefault), answer) << name;
  }
}

}  // namespace
}  // namespace gorbex::test
