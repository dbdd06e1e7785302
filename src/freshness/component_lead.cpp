#include "freshness/component_lead.h"

#include "core/reference_value.h"
#include "core/text.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

// A control's line has its version in decimal digits. Any other text stays as it is.
std::string InHexadecimal(std::string_view decimal) {
  const auto number = WholeNumber<unsigned>(decimal);
  return number ? Hexadecimal(*number) : std::string(decimal);
}

std::string HexadecimalVersion(std::string_view version) {
  const auto dot = version.find('.');
  if (dot == std::string_view::npos) return InHexadecimal(version);
  return InHexadecimal(version.substr(0, dot)) + "." + InHexadecimal(version.substr(dot + 1));
}

}  // namespace

std::optional<std::string> LibraryKeyOf(std::string_view referenceValue) {
  const auto fields = Split(referenceValue, '#');
  const auto guid = GetGUID(referenceValue);
  if (fields.size() < 3 || guid.empty() || ProjectFileOf(referenceValue)) return std::nullopt;
  const auto version = IsTypeLibraryReference(referenceValue) ? std::string(fields[1])
                                                              : HexadecimalVersion(fields[1]);
  const auto lcid = TrimBlanks(fields[2].substr(0, fields[2].find(';')));
  return std::string(guid).append("#").append(version).append("#").append(lcid);
}

std::string RegisteredFile(const RegistryTools& registry, const std::string& libraryKey) {
  const auto fields = Split(libraryKey, '#');
  if (fields.size() != 3) return {};
  std::string key("HKEY_CLASSES_ROOT\\TypeLib\\");
  key.append(fields[0]).append("\\").append(fields[1]).append("\\");
  const auto file = [&](std::string_view lcid) {
    return registry.fnsGetRegistryValue(std::string(key).append(lcid).append("\\win32"), "");
  };
  std::string found = file(fields[2]);
  if (found.empty() && fields[2] != "0") found = file("0");
  return found;
}

}  // namespace gorbex
