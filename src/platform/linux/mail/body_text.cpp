#include "platform/linux/mail/body_text.h"

#include <algorithm>
#include <optional>

#include "platform/header_fields.h"
#include "platform/linux/mail/character_set.h"
#include "platform/linux/mail/html_text.h"
#include "platform/linux/mail/mime_part.h"

namespace gorbex {
namespace {

constexpr std::size_t kLongestText = std::size_t{16} << 20U;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr int kDeepestPart = 32;
constexpr int kMostParts = 1000;

constexpr char kNoBreakSpace = '\xA0';

struct Found {
  std::string text;
  bool isPlain = false;
  [[nodiscard]] bool IsBlank() const {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
  }
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

/// Joins the lines that format=flowed has wrapped: those that end in a blank.
class FlowedText {
 public:
  explicit FlowedText(bool dropsBlanks) : dropsBlanks_(dropsBlanks) {}

  std::string Joined(std::string_view lines) {
    while (!lines.empty()) Take(TakeLine(lines));
    return std::move(text_);
  }

 private:
  // A line is flowed on only within one depth of quotation, and never the mark of a signature.
  void Take(std::string_view line) {
    const auto depth = std::min(line.find_first_not_of('>'), line.size());
    auto words = line.substr(depth);
    if (words.starts_with(' ')) words.remove_prefix(1);
    const bool isSignature = words == "-- ";
    const bool goesOn = goesOn_ && depth == depth_ && !isSignature;
    if (!goesOn) EndLine();
    if (!goesOn) text_ += line.substr(0, depth);
    goesOn_ = words.ends_with(' ') && !isSignature;
    depth_ = depth;
    if (goesOn_ && dropsBlanks_) words.remove_suffix(1);
    text_ += words;
  }

  void EndLine() {
    if (hasLine_) text_ += '\n';
    hasLine_ = true;
  }

  bool dropsBlanks_;
  std::string text_;
  std::size_t depth_ = 0;
  bool goesOn_ = false;
  bool hasLine_ = false;
};

std::string PlainText(const MimePart& part, const std::string& text) {
  if (!part.IsFlowed()) return text;
  auto joined = FlowedText(part.DropsFlowBlanks()).Joined(text);
  if (text.ends_with('\n')) joined += '\n';
  return joined;
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
    std::replace(text.begin(), text.end(), kNoBreakSpace, ' ');
    return Found{WithLineEnds(isPlain ? PlainText(part, text) : HtmlText(text)), isPlain};
  }

 private:
  // The alternatives of one text are side by side; otherwise the first text is the mail's.
  std::optional<Found> InParts(const MimePart& part, int depth) {
    const bool isChoice = part.Type() == "multipart/alternative";
    std::optional<Found> found;
    if (depth >= kDeepestPart) return found;
    part.EachPart([&](const MimePart& inner) {
      if (++parts_ > kMostParts) return true;
      auto text = In(inner, depth + 1);
      const bool isBetter =
          text && (!found || (!text->IsBlank() && (found->IsBlank() || !text->isPlain)));
      if (isBetter) found = std::move(text);
      return found && !found->IsBlank() && !(isChoice && found->isPlain);
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
