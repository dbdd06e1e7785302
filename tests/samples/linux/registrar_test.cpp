#include "platform/linux/registrar.h"

#include <gtest/gtest.h>

#include "compiler/type_library_image.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/memory_file_system.h"

namespace gorbex::standin {
namespace {

std::string Library(const std::string& name, const std::string& className) {
  TypeLibrary library;
  library.guid = "{00000000-0000-0000-0000-0000000000AA}";
  library.major = 1;
  library.name = name;
  library.types = {{TypeKind::Interface, "{00000000-0000-0000-0000-0000000000BB}", "_I", 0, {}},
                   {TypeKind::Coclass, "{00000000-0000-0000-0000-0000000000CC}", className, 0, 0}};
  return TypeLibraryImage(library);
}

TEST(RegistrarTest, EndsWithTheCodesOfTheSystemsToolAndTouchesNoForeignKey) {
  test::Journal journal;
  test::MemoryFileSystem files(journal);
  const test::TemporaryFolder folder;
  LinuxRegistry registry(folder.Path());
  Registrar registrar(files, registry);
  files.AddFile("C:\\a b.tlb", Library("Lib", "Class"));
  files.AddFile("C:\\text.dll", "no component");
  files.AddFile("C:\\evil.tlb", Library("VisualBasic", "Project\\shell"));
  using Outcome = Registrar::Outcome;
  const std::vector<std::pair<std::string, Outcome>> cases = {
      {" /s \"C:\\a b.tlb\"", Outcome::Done},      {" /S \"C:\\a b.tlb\"", Outcome::Done},
      {" -u /s \"C:\\a b.tlb\"", Outcome::Done},   {" /s", Outcome::BadArguments},
      {" /s C:\\a C:\\b", Outcome::BadArguments},  {" /s C:\\none.dll", Outcome::NotLoaded},
      {" /s C:\\text.dll", Outcome::NoEntryPoint}, {" /s C:\\evil.tlb", Outcome::Failed},
      {" -u /s C:\\evil.tlb", Outcome::Failed},
  };
  for (const auto& [arguments, outcome] : cases) {
    EXPECT_EQ(registrar.Run(arguments), outcome) << arguments;
    const bool registered = outcome == Outcome::Done && arguments.find("-u") == arguments.npos;
    EXPECT_EQ(registry.HasKey(RegistryRoot::ClassesRoot, "Lib.Class\\Clsid"), registered);
    EXPECT_FALSE(registry.HasKey(RegistryRoot::ClassesRoot, "VisualBasic.Project"));
  }
}

}  // namespace
}  // namespace gorbex::standin
