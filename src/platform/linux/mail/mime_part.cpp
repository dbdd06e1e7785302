#include "platform/linux/mail/mime_part.h"

#include <exception>
#include <vmime/contentTypeField.hpp>
#include <vmime/headerFieldFactory.hpp>
#include <vmime/mediaType.hpp>
#include <vmime/utility/encoder/encoderFactory.hpp>
#include <vmime/utility/inputStreamStringAdapter.hpp>
#include <vmime/utility/outputStreamStringAdapter.hpp>

#include "platform/code_page.h"
#include "platform/header_fields.h"

namespace gorbex {
namespace {

enum class Delimiter { None, Between, Last };

// The line end before a delimiter belongs to the delimiter.
std::string_view WithoutLineEnd(std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

// Whether a line separates two parts or follows the last one; blanks may follow.
Delimiter DelimiterOf(std::string_view line, std::string_view boundary) {
  if (!line.starts_with("--") || !line.substr(2).starts_with(boundary)) return Delimiter::None;
  line.remove_prefix(2 + boundary.size());
  const bool isLast = line.starts_with("--");
  if (isLast) line.remove_prefix(2);
  if (line.find_first_not_of(" \t") != std::string_view::npos) return Delimiter::None;
  return isLast ? Delimiter::Last : Delimiter::Between;
}

std::string FirstWord(const std::string& value) {
  return LowerCase(value.substr(0, value.find_first_of(" \t;(")));
}

std::string ParameterOf(const vmime::contentTypeField& field, const std::string& name) {
  const auto parameter = field.findParameter(name);
  return parameter == nullptr ? "" : LowerCase(parameter->getValue().getBuffer());
}

}  // namespace

MimePart::MimePart(std::string_view text) {
  const auto header = text.substr(0, EndOfHeader(text));
  contents_ = text.substr(header.size());
  encoding_ = FirstWord(FieldOf(header, "Content-Transfer-Encoding").value_or(""));
  isAttachment_ = FirstWord(FieldOf(header, "Content-Disposition").value_or("")) == "attachment";
  const auto type = FieldOf(header, "Content-Type");
  if (type) ReadType(*type);
}

void MimePart::ReadType(const std::string& value) {
  try {
    const auto field = vmime::dynamicCast<vmime::contentTypeField>(
        vmime::headerFieldFactory::getInstance()->create(vmime::fields::CONTENT_TYPE));
    field->parse(value);
    const auto type = field->getValue<vmime::mediaType>();
    type_ = LowerCase(type->getType()) + "/" + LowerCase(type->getSubType());
    if (field->hasBoundary()) boundary_ = field->getBoundary();
    if (field->hasCharset()) characterSet_ = field->getCharset().getName();
    isFlowed_ = ParameterOf(*field, "format") == "flowed";
    dropsFlowBlanks_ = ParameterOf(*field, "delsp") == "yes";
  } catch (const std::exception&) {
    type_ = "text/plain";  // an unreadable header counts as plain text
  }
}

std::string MimePart::Contents() const {
  if (encoding_ != "base64" && encoding_ != "quoted-printable") return std::string(contents_);
  try {
    const auto coder = vmime::utility::encoder::encoderFactory::getInstance()->create(encoding_);
    const std::string encoded(contents_);
    vmime::utility::inputStreamStringAdapter in(encoded);
    vmime::string decoded;
    vmime::utility::outputStreamStringAdapter out(decoded);
    coder->decode(in, out);
    return decoded;
  } catch (const std::exception&) {
    return std::string(contents_);
  }
}

void MimePart::EachPart(const std::function<bool(const MimePart&)>& visit) const {
  if (boundary_.empty()) return;
  auto rest = contents_;
  const char* start = nullptr;
  while (!rest.empty()) {
    const auto line = TakeLine(rest);
    const auto delimiter = DelimiterOf(line, boundary_);
    if (delimiter == Delimiter::None) continue;
    if (start != nullptr) {
      const std::string_view part(start, static_cast<std::size_t>(line.data() - start));
      if (visit(MimePart(WithoutLineEnd(part)))) return;
    }
    if (delimiter == Delimiter::Last) return;
    start = rest.data();
  }
  // A mail that was cut off ends in the middle of a part.
  if (start != nullptr) {
    visit(MimePart({start, static_cast<std::size_t>(contents_.end() - start)}));
  }
}

}  // namespace gorbex
