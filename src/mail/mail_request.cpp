#include "mail/mail_request.h"

#include <algorithm>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// The whole field when it holds no blank.
std::string_view ValueOf(std::string_view field) {
  return TrimBlanks(field.substr(field.find(' ') + 1));
}

// Other systems' users write "C:/Drops". A word that begins with a single slash is not a path but
// an option.
std::string WithBackslashes(std::string path) {
  if (path.starts_with('/') && !path.starts_with("//")) return path;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::string ProjectOf(std::string_view field) {
  std::string project = WithoutQuotes(ValueOf(field));
  return project.starts_with("$/") ? project : WithBackslashes(std::move(project));
}

std::string BuildPathOf(std::string_view field) {
  std::string path = WithBackslashes(std::string(ValueOf(field)));
  if (!path.empty() && !path.ends_with('\\')) path += '\\';
  return path;
}

void ReadField(std::string_view field, MailRequest& request) {
  const auto is = [&](std::string_view name) {
    return EqualsIgnoringCase(field.substr(0, name.size()), name);
  };
  if (is("GET")) request.GetRequested = true;
  if (is("BUI")) request.BuildRequested = true;
  if (is("PAT")) request.strBuildPath = BuildPathOf(field);
  if (is("PRO")) request.strProject = ProjectOf(field);
}

}  // namespace

MailRequest ReadMailRequest(std::string_view body) {
  MailRequest request;
  if (!body.empty()) request.lastField = 0;
  for (auto comma = body.find(','); comma != std::string_view::npos; comma = body.find(',')) {
    ReadField(body.substr(0, comma), request);
    body.remove_prefix(comma + 1);
    ++request.lastField;
  }
  return request;
}

}  // namespace gorbex
