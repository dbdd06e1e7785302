#include "platform/linux/mail/body_text.h"

#include <algorithm>
#include <optional>

#include "platform/linux/mail/character_set.h"
#include "platform/linux/mail/html_text.h"
#include "platform/linux/mail/mime_part.h"

namespace gorbex {
namespace {

constexpr std::size_t kLongestText = std::size_t{16} << 20U;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr int kDeepestPart = 32;
constexpr int kMostParts = 1000;

struct Found {
  std::string text;
  bool isPlain = false;
};

std::string WithLineEnds(std::string_view text) {
  std::string lines;
  lines.reserve(text.size() + text.size() / 32);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = text[i] == '\r' && text.substr(i + 1).starts_with('\n');
    if (isPair) ++i;
    if (isPair || text[i] == '\n' || text[i] == '\r') {
      lines += "\r\n";
    } else {
      lines += text[i];
    }
  }
  return lines;
}

class TextSearch {
 public:
  std::optional<Found> In(const MimePart& part, int depth) {
    if (part.IsMultipart()) return InParts(part, depth);
    if (part.IsAttachment()) return std::nullopt;
    const bool isPlain = part.Type() == "text/plain";
    if (!isPlain && part.Type() != "text/html") return std::nullopt;
    auto bytes = part.Contents();
    bytes.resize(std::min(bytes.size(), kLongestText));
    if (bytes.starts_with(kUtf8Mark)) bytes.erase(0, kUtf8Mark.size());
    auto text = part.CharacterSet().empty() ? FromAnyCharacterSet(bytes)
                                            : FromCharacterSet(bytes, part.CharacterSet());
    return Found{WithLineEnds(isPlain ? text : HtmlText(text)), isPlain};
  }

 private:
  // The alternatives of one text stand side by side; otherwise the first text is the mail's.
  std::optional<Found> InParts(const MimePart& part, int depth) {
    const bool isChoice = part.Type() == "multipart/alternative";
    std::optional<Found> found;
    if (depth >= kDeepestPart) return found;
    part.EachPart([&](const MimePart& inner) {
      if (++parts_ > kMostParts) return true;
      auto text = In(inner, depth + 1);
      if (text && (!found || text->isPlain)) found = std::move(text);
      return found && (found->isPlain || !isChoice);
    });
    return found;
  }

  int parts_ = 0;
};

}  // namespace

std::string BodyText(std::string_view mail) {
  const auto found = TextSearch().In(MimePart(mail), 0);
  return found ? found->text : "";
}

}  // namespace gorbex
