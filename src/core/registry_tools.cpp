#include "core/registry_tools.h"

#include <array>
#include <utility>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::size_t kQueryBuffer = 255;
constexpr std::size_t kNumberBytes = 4;

std::string_view SubKeyOf(std::string_view keyPath) {
  const auto separator = keyPath.find('\\');
  return separator == std::string_view::npos ? std::string_view() : keyPath.substr(separator + 1);
}

std::string NumberText(std::string_view bytes) {
  std::uint64_t sum = 0;
  for (std::size_t i = bytes.size(); i-- > 0;) {
    sum = sum * 256 + static_cast<unsigned char>(bytes[i]);
  }
  return std::to_string(sum);
}

// The result of a query of the given type for a stored value; nothing when the query fails.
std::optional<std::string> Queried(const RegistryValue& value, std::string_view type) {
  const std::string& bytes = value.bytes;
  if (bytes.size() > kQueryBuffer) return std::nullopt;
  if (type == "STRING" || type == "BOOL") {
    if (bytes.empty()) return std::nullopt;
    return bytes.substr(0, bytes.size() - 1);
  }
  if (type == "NUMBER" && bytes.size() <= kNumberBytes) return NumberText(bytes);
  if (type == "BINARY") return bytes;
  return std::nullopt;
}

std::optional<RegistryValue> Stored(std::string_view value, std::string_view type) {
  if (type == "STRING") return RegistryValue{RegistryType::Text, std::string(value) + '\0'};
  if (type == "BINARY") return RegistryValue{RegistryType::Binary, std::string(value)};
  if (type != "NUMBER" && type != "LONG") return std::nullopt;
  auto number = static_cast<std::uint32_t>(ToLong(NumericValue(value)));
  std::string bytes;
  for (std::size_t i = 0; i < kNumberBytes; ++i, number >>= 8) {
    bytes += static_cast<char>(number & 0xFF);
  }
  return RegistryValue{RegistryType::Number, bytes};
}

void RequireLength(std::string_view name, std::string_view text) {
  const auto problem = RegistryTools::LengthProblem(text);
  if (!problem) return;
  throw RuntimeError::WithDescription(ErrorNumber::InvalidCall, std::string(name) + " " + *problem);
}

std::string TypeName(std::string_view type) {
  return type.empty() ? "STRING" : UpperCase(type);
}

}  // namespace

std::string RegistryTools::fnsGetRegistryValue(std::string_view keyPath, std::string_view name,
                                               std::string_view type) const {
  const std::string typeName = TypeName(type);
  std::string result = typeName == "BOOL" ? "False" : "";
  Procedure(report_, ": RegistryTools.fnsGetRegistryValue").Do([&] {
    const std::uint32_t root = fnlHKEYValue(keyPath);
    if (root == 0) return;
    const auto value = registry_.Value(static_cast<RegistryRoot>(root), SubKeyOf(keyPath), name);
    if (!value) return;
    if (auto queried = Queried(*value, typeName)) result = std::move(*queried);
  });
  return result;
}

std::optional<std::string> RegistryTools::LengthProblem(std::string_view text) {
  // A text is stored with a zero byte at its end.
  constexpr std::size_t kLongest = kQueryBuffer - 1;
  if (text.size() <= kLongest) return std::nullopt;
  return "is longer than " + std::to_string(kLongest) + " characters, the most that can be stored";
}

void RegistryTools::subSetRegistryValue(std::string_view keyPath, std::string_view name,
                                        std::string_view value, std::string_view type) {
  Procedure(report_, ": RegistryTools.subSetRegistryValue").Do([&] {
    const auto root = static_cast<RegistryRoot>(fnlHKEYValue(keyPath));
    if (root == RegistryRoot{}) return;
    if (TypeName(type) == "STRING") RequireLength(name, value);
    if (!registry_.CreateKey(root, SubKeyOf(keyPath))) return;
    if (const auto stored = Stored(value, TypeName(type))) {
      registry_.SetValue(root, SubKeyOf(keyPath), name, *stored);
    }
  });
}

std::uint32_t RegistryTools::fnlHKEYValue(std::string_view keyPath) const {
  using Root = std::pair<std::string_view, RegistryRoot>;
  static constexpr std::array<Root, 5> kRoots = {{
      {"HKEY_CLASSES_ROOT", RegistryRoot::ClassesRoot},
      {"HKEY_CURRENT_USER", RegistryRoot::CurrentUser},
      {"HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine},
      {"HKEY_USERS", RegistryRoot::Users},
      {"HKEY_PERFORMANCE_DATA", RegistryRoot::PerformanceData},
  }};
  const auto separator = keyPath.find('\\');
  if (separator == std::string_view::npos) return 0;
  for (const auto& [name, root] : kRoots) {
    if (EqualsIgnoringCase(name, keyPath.substr(0, separator))) {
      return static_cast<std::uint32_t>(root);
    }
  }
  return 0;
}

bool RegistryTools::KeyExists(std::string_view keyPath) const {
  return Procedure(report_, ": RegistryTools.KeyExists").Do([&] {
    const std::uint32_t root = fnlHKEYValue(keyPath);
    return root != 0 && registry_.HasKey(static_cast<RegistryRoot>(root), SubKeyOf(keyPath));
  });
}

}  // namespace gorbex
