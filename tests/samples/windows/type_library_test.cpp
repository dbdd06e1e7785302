#include <gtest/gtest.h>
#include <windows.h>

#include <oleauto.h>

#include <string>

#include "compiler/identity.h"
#include "compiler/type_library_image.h"
#include "platform/windows/com_pointer.h"
#include "platform/windows/wide_text.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::standin {
namespace {

std::string NameOf(ITypeInfo& type, MEMBERID id) {
  BSTR name = nullptr;
  if (FAILED(type.GetDocumentation(id, &name, nullptr, nullptr, nullptr))) return "?";
  auto text = FromWideRoughly({name, SysStringLen(name)});
  SysFreeString(name);
  return text;
}

std::string Number(long number) {
  return std::to_string(number);
}

std::string Listed(ITypeInfo& type, const FUNCDESC& use) {
  if (use.invkind == INVOKE_FUNC) return {};  // inherited
  const auto value = use.invkind == INVOKE_PROPERTYGET ? use.elemdescFunc.tdesc.vt
                                                       : use.lprgelemdescParam->tdesc.vt;
  return " " + NameOf(type, use.memid) + "(" + Number(use.invkind) + "," + Number(value) + "," +
         Number(use.memid) + ")";
}

// "name(kind of use, type, number)" of every property, "name=value" of every constant.
std::string Listed(ITypeLib& library, UINT index) {
  ComPointer<ITypeInfo> type;
  EXPECT_EQ(library.GetTypeInfo(index, type.Place()), S_OK);
  auto text = NameOf(*type.Get(), MEMBERID_NIL) + ":";
  FUNCDESC* use = nullptr;
  for (UINT i = 0; SUCCEEDED(type->GetFuncDesc(i, &use)); ++i) {
    text += Listed(*type.Get(), *use);
    type->ReleaseFuncDesc(use);
  }
  VARDESC* constant = nullptr;
  for (UINT i = 0; SUCCEEDED(type->GetVarDesc(i, &constant)); ++i) {
    const VARIANT& value = *constant->lpvarValue;
    EXPECT_EQ(value.vt, VT_I4);
    text += " " + NameOf(*type.Get(), constant->memid) + "=" + Number(value.lVal);
    type->ReleaseVarDesc(constant);
  }
  return text;
}

TEST(TypeLibraries, HoldTheirMembersForTheSystemsLoader) {
  TypeLibrary library{FirstIdentity("P"), 1, 0, 0, 0, false, "P", "", {}};
  library.types = {{TypeKind::Dispatch, FirstIdentity("_C"), "_C", 0x11D0, {}},
                   {TypeKind::Coclass, FirstIdentity("C"), "C", 2, 0},
                   {TypeKind::Dispatch, FirstIdentity("_D"), "_D", 0x11D0, {}},
                   {TypeKind::Coclass, FirstIdentity("D"), "D", 2, 2},
                   {TypeKind::Enum, "", "E", 0, {}}};
  std::vector<LibraryMembers> members(5);
  members[0].properties = {{"Value", ValueType::Currency, 0, true, true, false},
                           {"d", ValueType::Object, 7, true, false, true}};
  members[2].properties = {{"VALUE", ValueType::Text, 3, false, true, false},
                           {"All", ValueType::Variant, 4, true, true, true}};
  members[4].constants = {{"eFirst", 0}, {"eLarge", 1 << 26}, {"eLess", -5}};
  const test::TemporaryFolder folder;
  folder.Put("p.tlb", TypeLibraryImage(library, members));
  ComPointer<ITypeLib> loaded;
  const auto path = (folder.Path() / "p.tlb").wstring();
  ASSERT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, loaded.Place()), S_OK);
  EXPECT_EQ(Listed(*loaded.Get(), 0), "_C: Value(2,6,0) Value(4,6,0) D(2,9,7) D(8,9,7)");
  EXPECT_EQ(Listed(*loaded.Get(), 2), "_D: Value(4,8,3) All(2,12,4) All(4,12,4) All(8,12,4)");
  EXPECT_EQ(Listed(*loaded.Get(), 4), "E: eFirst=0 eLarge=67108864 eLess=-5");
}

}  // namespace
}  // namespace gorbex::standin
