#include "analysis/reference_resolution.h"

#include "core/reference_value.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::string_view kTypeLibKey = "HKEY_CLASSES_ROOT\\TypeLib\\";

}  // namespace

bool ReferenceResolution::IsvalidRef(std::string_view guid) const {
  return Procedure(report_, ": frmBuilder.IsvalidRef").Do([&] {
    return registry_.KeyExists(std::string(kTypeLibKey).append(guid));
  });
}

std::string ReferenceResolution::LibraryPath(std::string_view guid,
                                             std::string_view version) const {
  std::string key(kTypeLibKey);
  key.append(guid).append("\\").append(version).append("\\0\\win32");
  return registry_.fnsGetRegistryValue(key, "");
}

Verdict ReferenceResolution::RefType(std::string_view guid, std::string_view version,
                                     std::string_view componentPath) const {
  Verdict verdict{Image::VbReference, "Reference OK", ""};
  Procedure(report_, ": frmBuilder.RefType").Run([&](Procedure& on) {
    if (!on([&] { return IsvalidRef(guid); })) {
      verdict.text = kInvalidGuid;
      verdict.image = Image::InvalidReference;
      return;
    }
    const std::string library = on([&] { return LibraryPath(guid, version); });
    verdict.registryPath = LowerCase(library);
    if (on([&] { return library.empty() || !FileExists(files_, library); })) {
      verdict.text = kNoPath;
      verdict.image = Image::InvalidReference;
      return;
    }
    if (LowerCase(componentPath) != verdict.registryPath) {
      verdict.text = "Project & Registry Paths Differ";
      verdict.image = Image::CheckReference;
    }
  });
  return verdict;
}

std::string ReferenceResolution::GetRefComponent(std::string_view referenceValue) const {
  return Procedure(report_, ": frmBuilder.GetRefComponent").Do([&] {
    return std::string(ComponentPath(referenceValue));
  });
}

std::string ReferenceResolution::GUIDChanged(const std::string& referenceValue) const {
  std::string changed;
  Procedure(report_, ": frmBuilder.GUIDChanged").Run([&](Procedure& on) {
    const std::string_view oldGuid = GetGUID(referenceValue);
    if (on([&] { return IsvalidRef(oldGuid); })) return;
    // Here the whole value is both the GUID and the version, as it always was.
    const std::string file =
        on([&] { return LowerCase(LibraryPath(referenceValue, referenceValue)); });
    const std::string answer = on([&] { return components_.InterfaceGuid(file, "none"); });
    const std::string_view newGuid = GetGUID(answer);
    if (newGuid != oldGuid) changed = newGuid;
  });
  return changed;
}

}  // namespace gorbex
