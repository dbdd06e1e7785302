#include "compiler/component_classes.h"

#include "compiler/source_text.h"
#include "platform/code_page.h"

namespace gorbex::standin {

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

}  // namespace gorbex::standin
