#include "core/source_name.h"

#include <algorithm>
#include <initializer_list>

#include "platform/code_page.h"

namespace gorbex {
namespace {

bool EndsWithOneOf(std::string_view file, std::initializer_list<std::string_view> extensions) {
  const std::string_view extension = file.substr(std::min(file.rfind('.'), file.size()));
  return std::ranges::any_of(extensions,
                             [&](auto each) { return EqualsIgnoringCase(each, extension); });
}

}  // namespace

bool IsSourceName(std::string_view file) {
  return EndsWithOneOf(file, {".bas", ".cls", ".ctl", ".dob", ".dsr", ".frm", ".pag"});
}

bool IsDocumentName(std::string_view file) {
  return IsSourceName(file) || EndsWithOneOf(file, {".vbp", ".vbg", ".bpf"});
}

bool IsOutputName(std::string_view file) {
  return !IsDocumentName(file) && !EndsWithOneOf(file, {".dll", ".exe", ".ocx", ".reg", ".tlb"});
}

}  // namespace gorbex
