#include "compiler/source_digest.h"

#include <array>

#include "compiler/sha1.h"
#include "platform/component/library_file.h"
#include "platform/header_fields.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"

namespace gorbex::standin {
namespace {

std::string ContentsOf(const FileReader& files, const std::string& path) {
  try {
    return FileExists(files, path) ? files.Read(path) : std::string();
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace

void SourceDigest::Add(std::string_view bytes) {
  const auto digest = Sha1(bytes);
  all_.append(digest.begin(), digest.end());
}

void SourceDigest::AddProject(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const auto line = Trimmed(TakeLine(text));
    if (!line.empty()) lines.append(line).append("\n");
  }
  Add(lines);
}

void SourceDigest::AddSource(const FileReader& files, const std::string& path) {
  constexpr std::array<std::string_view, 5> kParts = {".frx", ".ctx", ".pgx", ".dox", ".dsx"};
  Add(ContentsOf(files, path));
  const auto stem = path.substr(0, path.rfind('.'));
  for (const auto part : kParts) Add(ContentsOf(files, stem + std::string(part)));
}

void SourceDigest::AddInterface(const FileReader& files, const std::string& component) {
  const auto bytes = ContentsOf(files, component);
  const auto library = InnerLibraryOf(bytes);
  Add(library ? library->bytes : std::string_view(bytes));
}

std::string SourceDigest::Bytes() const {
  const auto digest = Sha1(all_);
  return {digest.begin(), digest.end()};
}

}  // namespace gorbex::standin
