#include "platform/windows_path.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::string_view kSeparators = "\\/";

bool IsSeparator(char character) {
  return character == '\\' || character == '/';
}

bool IsLetter(char character) {
  const char lower = LowerCase(character);
  return lower >= 'a' && lower <= 'z';
}

bool HasDrive(std::string_view text) {
  return text.size() >= 2 && IsLetter(text[0]) && text[1] == ':';
}

// Takes the part that names a drive or a share off the front.
ParsedPath TakeStart(std::string_view& text) {
  ParsedPath path;
  if (HasDrive(text)) {
    path.start = ParsedPath::Start::Drive;
    path.drive = LowerCase(text[0]);
    text.remove_prefix(2);
  } else if (text.size() >= 2 && IsSeparator(text[0]) && IsSeparator(text[1])) {
    path.start = ParsedPath::Start::Share;
  } else if (!text.empty() && IsSeparator(text.front())) {
    path.start = ParsedPath::Start::Drive;
    path.drive = 'c';
  }
  return path;
}

// How many names ".." does not take away: a server and its share.
std::size_t FixedNames(const ParsedPath& path) {
  return path.start == ParsedPath::Start::Share ? 2 : 0;
}

void AddName(ParsedPath& path, std::string_view name) {
  if (name.empty() || name == ".") return;
  if (name != "..") {
    path.names.push_back(name);
    return;
  }
  if (path.names.size() > FixedNames(path)) {
    path.names.pop_back();
  } else if (path.start == ParsedPath::Start::CurrentFolder) {
    ++path.levelsUp;
  }
}

void AddNames(ParsedPath& path, std::string_view text) {
  while (!text.empty()) {
    const auto* const end = std::find_if(text.begin(), text.end(), IsSeparator);
    const std::string_view name(text.begin(), end);
    AddName(path, name);
    text.remove_prefix(std::min(name.size() + 1, text.size()));
  }
}

// The system drops blanks and dots at the end of a path.
std::string_view WithoutDroppedEnd(std::string_view text) {
  const auto last = text.find_last_not_of(" .");
  const auto name = text.find_last_of(kSeparators);
  const auto begin = name == std::string_view::npos ? 0 : name + 1;
  const auto tail = text.substr(begin);
  if (tail == "." || tail == "..") return text;
  return text.substr(0, last == std::string_view::npos ? begin : std::max(begin, last + 1));
}

}  // namespace

bool IsNameCharacter(char character) {
  static constexpr std::array<bool, 256> kAllowed = [] {
    std::array<bool, 256> allowed{};
    std::fill(allowed.begin() + 0x20, allowed.end(), true);
    for (const char forbidden : std::string_view("*?\"<>|:\\/")) {
      allowed[static_cast<unsigned char>(forbidden)] = false;
    }
    return allowed;
  }();
  return kAllowed[static_cast<unsigned char>(character)];
}

std::optional<ParsedPath> ParseWindowsPath(std::string_view text) {
  if (text.empty()) return std::nullopt;
  auto path = TakeStart(text);
  for (const char character : text) {
    if (!IsSeparator(character) && !IsNameCharacter(character)) return std::nullopt;
  }
  path.names.reserve(8);
  AddNames(path, WithoutDroppedEnd(text));
  return path;
}

std::string ResolvedPath(std::string_view folder, std::string_view path) {
  auto names = path;
  ParsedPath resolved = TakeStart(names);
  const bool atTop = resolved.start == ParsedPath::Start::Drive && !HasDrive(path);
  const bool isRelative = atTop || resolved.start == ParsedPath::Start::CurrentFolder;
  const bool fromFolder = isRelative && !folder.empty();
  const auto start = fromFolder ? folder : path;
  std::string text;
  text.reserve(folder.size() + path.size() + 4);
  text = start.substr(0, HasDrive(start) ? 2 : 0);
  if (fromFolder) {
    resolved = TakeStart(folder);
    AddNames(resolved, folder);
    if (atTop) resolved.names.resize(std::min(resolved.names.size(), FixedNames(resolved)));
  }
  AddNames(resolved, names);
  if (resolved.start == ParsedPath::Start::Drive) text += "\\";
  if (resolved.start == ParsedPath::Start::Share) text += "\\\\";
  for (auto level = resolved.levelsUp; level > 0; --level) text += "..\\";
  for (const auto name : resolved.names) text.append(name).append("\\");
  if (!resolved.names.empty() || resolved.levelsUp > 0) text.pop_back();
  return text;
}

}  // namespace gorbex
