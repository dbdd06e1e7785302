#include "compiler/component_identity.h"

#include <algorithm>

#include "compiler/source_text.h"
#include "platform/code_page.h"

namespace gorbex::standin {
namespace {

constexpr std::uint16_t kControlLibrary = 0x2;
constexpr std::uint32_t kNonExtensible = 0x80;
constexpr std::uint32_t kDispatchable = 0x1000;
constexpr std::uint32_t kInterfaceFlags = type_flag::kHidden | type_flag::kDual | kNonExtensible |
                                          type_flag::kOleAutomation | kDispatchable;

std::uint32_t ClassFlags(const OfferedClass& offered) {
  return (offered.isCreatable ? type_flag::kCanCreate : 0) |
         (offered.isControl ? type_flag::kControl : 0);
}

// A name can mean only one type.
void AddType(TypeLibrary& library, TypeKind kind, const std::string& name) {
  const bool isTaken =
      std::any_of(library.types.begin(), library.types.end(),
                  [&](const TypeInfo& type) { return EqualsIgnoringCase(type.name, name); });
  if (isTaken || name.empty() || EqualsIgnoringCase(library.name, name)) return;
  library.types.push_back({kind, "", name, 0, std::nullopt});
}

void AddTypes(TypeLibrary& library, const OfferedClass& offered) {
  for (const auto& each : offered.declarations.enums) AddType(library, TypeKind::Enum, each.name);
  for (const auto& each : offered.declarations.records) {
    AddType(library, TypeKind::Record, each.name);
  }
}

std::string AllGuids(const TypeLibrary& library) {
  std::string guids = library.guid;
  for (const auto& type : library.types) guids += type.guid;
  return guids;
}

class IdentityRules {
 public:
  IdentityRules(const Project& project, const std::optional<TypeLibrary>& kept,
                const NewIdentities& identities)
      : project_(project.name),
        isCompatible_(project.compatibleMode == "1" || project.compatibleMode == "2"),
        keepsInterfaces_(project.compatibleMode == "2"),
        kept_(isCompatible_ && kept && !kept->guid.empty() ? &*kept : nullptr),
        old_(kept ? AllGuids(*kept) : std::string()),
        identities_(identities) {}

  [[nodiscard]] const TypeLibrary* Kept() const { return kept_; }

  [[nodiscard]] std::string Library() const {
    return kept_ != nullptr ? kept_->guid : FirstOrNew(project_);
  }

  [[nodiscard]] std::string Class(const std::string& name) const {
    const auto* const old = KeptClass(name);
    return old != nullptr ? old->guid : FirstOrNew(project_ + "." + name + ".Class");
  }

  [[nodiscard]] std::string Interface(const std::string& name) const {
    const auto* const old = KeptClass(name);
    if (keepsInterfaces_ && old != nullptr && old->defaultInterface) {
      const auto& guid = kept_->types[*old->defaultInterface].guid;
      if (!guid.empty()) return guid;
    }
    return FirstOrNew(project_ + "." + name + ".Interface");
  }

 private:
  [[nodiscard]] std::string FirstOrNew(const std::string& name) const {
    const bool isFirst = isCompatible_ && kept_ == nullptr;
    return isFirst ? FirstIdentity(name) : identities_.Next(name, old_);
  }

  [[nodiscard]] const TypeInfo* KeptClass(std::string_view name) const {
    if (kept_ == nullptr) return nullptr;
    const auto found =
        std::find_if(kept_->types.begin(), kept_->types.end(), [&](const TypeInfo& type) {
          return type.kind == TypeKind::Coclass && !type.guid.empty() &&
                 EqualsIgnoringCase(type.name, name);
        });
    return found == kept_->types.end() ? nullptr : &*found;
  }

  std::string project_;
  bool isCompatible_;
  bool keepsInterfaces_;
  const TypeLibrary* kept_;
  std::string old_;
  const NewIdentities& identities_;
};

}  // namespace

OfferedClass ReadOffer(const ProjectItem& item, std::string_view source) {
  const auto creatable = HeaderAttribute(source, "VB_Creatable");
  return {HeaderAttribute(source, "VB_Name").value_or(item.name),
          item.kind == ProjectItem::Kind::UserControl,
          !creatable || !EqualsIgnoringCase(*creatable, "False"), ReadDeclarations(source)};
}

bool IsName(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  if (text.empty() || text.size() > kLongest) return false;
  const bool beginsWithLetter = text[0] != '_' && (text[0] < '0' || text[0] > '9');
  return beginsWithLetter && FirstWord(text).size() == text.size();
}

TypeLibrary ComponentLibrary(const Project& project, const std::vector<OfferedClass>& classes,
                             const std::optional<TypeLibrary>& kept,
                             const NewIdentities& identities) {
  const IdentityRules rules(project, kept, identities);
  const bool isControl = project.type == ProjectType::Control;
  TypeLibrary library;
  library.guid = rules.Library();
  library.major = rules.Kept() != nullptr ? rules.Kept()->major : std::uint16_t{1};
  library.minor = rules.Kept() != nullptr ? rules.Kept()->minor : std::uint16_t{0};
  library.flags = isControl ? kControlLibrary : std::uint16_t{0};
  library.name = project.name;
  library.helpString = project.description;
  for (const auto& offered : classes) {
    const auto& name = offered.name;
    const auto interface = library.types.size();
    library.types.push_back(
        {TypeKind::Dispatch, rules.Interface(name), "_" + name, kInterfaceFlags, std::nullopt});
    library.types.push_back(
        {TypeKind::Coclass, rules.Class(name), name, ClassFlags(offered), interface});
  }
  for (const auto& offered : classes) AddTypes(library, offered);
  return library;
}

}  // namespace gorbex::standin
