#include "compiler/block_check.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/plain_text.h"

namespace gorbex::standin {
namespace {

enum class BlockKind { Procedure, Type, If, For, Other };

struct BlockRule {
  BlockKind kind;
  std::string_view opening;
  std::string_view behindOpening;  ///< words that may follow; "*": any one must; empty: all may
  std::string_view closing;
  std::string_view behindClosing;
  std::string_view unclosed;
  std::string_view stray;
};

constexpr std::string_view kAfterProcedures =
    "Only comments may appear after End Sub, End Function, or End Property";

constexpr std::array kBlocks = {
    BlockRule{BlockKind::Procedure, "sub", "*", "end", "sub", "Expected End Sub", kAfterProcedures},
    BlockRule{BlockKind::Procedure, "function", "*", "end", "function", "Expected End Function",
              kAfterProcedures},
    BlockRule{BlockKind::Procedure, "property", "get let set", "end", "property",
              "Expected End Property", kAfterProcedures},
    BlockRule{BlockKind::Type, "type", "*", "end", "type", "Expected End Type",
              "End Type without Type"},
    BlockRule{BlockKind::Type, "enum", "*", "end", "enum", "Expected End Enum",
              "End Enum without Enum"},
    BlockRule{BlockKind::If, "if", "", "end", "if", "Block If without End If",
              "End If without block If"},
    BlockRule{BlockKind::For, "for", "", "next", "", "For without Next", "Next without For"},
    BlockRule{BlockKind::Other, "do", "", "loop", "", "Do without Loop", "Loop without Do"},
    BlockRule{BlockKind::Other, "while", "", "wend", "", "While without Wend",
              "Wend without While"},
    BlockRule{BlockKind::Other, "select", "case", "end", "select", "Select Case without End Select",
              "End Select without Select Case"},
    BlockRule{BlockKind::Other, "with", "", "end", "with", "Expected End With",
              "End With without With"},
};

constexpr std::string_view kModifiers = "public private friend static global";

bool IsOneOf(std::string_view words, std::string_view word) {
  const auto known = Split(words, ' ');
  return std::find(known.begin(), known.end(), word) != known.end();
}

/// A statement, seen as its first two words; the second follows after blanks.
struct Lead {
  explicit Lead(std::string_view statement) : text(statement), first(FirstWord(statement)) {
    rest = text.substr(first.size());
    if (rest.starts_with(' ') || rest.starts_with('\t')) second = FirstWord(Trimmed(rest));
  }

  std::string_view text;
  std::string first;
  std::string_view rest;  ///< after the first word
  std::string second;
};

bool IsNumber(std::string_view word) {
  return !word.empty() && word.find_first_not_of("0123456789") == std::string_view::npos;
}

// Line numbers and the words that tell who may see a declaration have no part in blocks.
Lead LeadOf(std::string_view statement) {
  Lead lead(statement);
  while (IsNumber(lead.first) || IsOneOf(kModifiers, lead.first)) lead = Lead(Trimmed(lead.rest));
  return lead;
}

const BlockRule* RuleClosedBy(const Lead& lead) {
  // The editor writes "EndIf" as two words.
  const bool joined = lead.first == "endif";
  for (const auto& rule : kBlocks) {
    if (joined ? rule.kind == BlockKind::If
               : lead.first == rule.closing &&
                     (rule.behindClosing.empty() || lead.second == rule.behindClosing)) {
      return &rule;
    }
  }
  return nullptr;
}

const BlockRule* RuleOpenedBy(const Lead& lead) {
  for (const auto& rule : kBlocks) {
    if (lead.first != rule.opening) continue;
    const auto wanted = rule.behindOpening;
    const bool fits =
        wanted.empty() || (wanted == "*" && !lead.second.empty()) || IsOneOf(wanted, lead.second);
    return fits ? &rule : nullptr;
  }
  return nullptr;
}

enum class Condition { None, SingleLine, Block };

Condition ConditionOf(std::string_view statement) {
  while (!statement.empty()) {
    const auto word = FirstWord(statement);
    statement.remove_prefix(std::max<std::size_t>(word.size(), 1));
    if (word == "then" && Trimmed(statement).empty()) return Condition::Block;
    if (word == "then" || word == "goto") return Condition::SingleLine;
  }
  return Condition::None;
}

class BlockChecker {
 public:
  std::optional<CodeFault> Check(const std::vector<CodeLine>& code) {
    for (const auto& line : code) {
      if (const auto text = CheckLine(line); !text.empty()) {
        return CodeFault{line.number, std::string(text)};
      }
    }
    if (open_.empty()) return std::nullopt;
    return CodeFault{code.back().number, std::string(open_.front().rule->unclosed)};
  }

 private:
  struct OpenBlock {
    const BlockRule* rule;
    bool hasElse = false;
  };

  // All checks answer with the error's text, empty when there is none.
  std::string_view CheckLine(const CodeLine& line) {
    restIsTaken_ = false;
    for (const auto& statement : line.statements) {
      const bool isLast = &statement == &line.statements.back();
      const auto text = CheckStatement(statement, isLast);
      if (!text.empty() || restIsTaken_) return text;
    }
    return {};
  }

  std::string_view CheckStatement(std::string_view statement, bool isLast) {
    const Lead lead = LeadOf(statement);
    if (IsInside(BlockKind::Type)) return CheckMember(lead);
    if (const auto* rule = RuleClosedBy(lead)) return Close(*rule, lead);
    if (lead.first == "else") return TakeElse(lead, isLast);
    if (lead.first == "elseif") return TakeElseIf(lead);
    if (lead.first == "case") return IsInSelect() ? "" : "Case without Select Case";
    if (const auto* rule = RuleOpenedBy(lead)) return Open(*rule, lead, isLast);
    return {};
  }

  // Every other word may be the name of a member.
  std::string_view CheckMember(const Lead& lead) {
    if (lead.first != "end" || lead.second.empty() || lead.second == "as") return {};
    if (lead.second != open_.back().rule->behindClosing) return open_.back().rule->unclosed;
    open_.pop_back();
    return {};
  }

  std::string_view Open(const BlockRule& rule, const Lead& lead, bool isLast) {
    if (rule.kind == BlockKind::Procedure && !open_.empty()) return open_.front().rule->unclosed;
    if (rule.kind == BlockKind::Type && !open_.empty()) return "Invalid inside procedure";
    const bool isDeclaration = rule.kind == BlockKind::Procedure || rule.kind == BlockKind::Type;
    if (!isDeclaration && open_.empty()) return "Invalid outside procedure";
    if (rule.kind == BlockKind::If) {
      const auto condition = ConditionOf(lead.rest);
      if (condition == Condition::None) return "Expected: Then or GoTo";
      restIsTaken_ = condition == Condition::SingleLine || !isLast;
      if (restIsTaken_) return {};
    }
    open_.push_back({&rule});
    return {};
  }

  std::string_view Close(const BlockRule& rule, const Lead& lead) {
    auto count = std::ptrdiff_t{1};
    if (rule.kind == BlockKind::For) count += std::count(lead.rest.begin(), lead.rest.end(), ',');
    for (; count > 0; --count) {
      if (open_.empty()) return rule.stray;
      if (open_.back().rule != &rule) {
        return rule.kind == BlockKind::Procedure ? open_.back().rule->unclosed : rule.stray;
      }
      open_.pop_back();
    }
    return {};
  }

  std::string_view TakeElse(const Lead& lead, bool isLast) {
    if (!IsInside(BlockKind::If) || open_.back().hasElse) return "Else without If";
    open_.back().hasElse = true;
    const auto rest = Trimmed(lead.rest);
    return rest.empty() ? "" : CheckStatement(rest, isLast);
  }

  std::string_view TakeElseIf(const Lead& lead) {
    if (!IsInside(BlockKind::If) || open_.back().hasElse) return "Else without If";
    return ConditionOf(lead.rest) == Condition::None ? "Expected: Then or GoTo" : "";
  }

  [[nodiscard]] bool IsInside(BlockKind kind) const {
    return !open_.empty() && open_.back().rule->kind == kind;
  }

  [[nodiscard]] bool IsInSelect() const {
    return !open_.empty() && open_.back().rule->opening == "select";
  }

  std::vector<OpenBlock> open_;
  bool restIsTaken_ = false;
};

}  // namespace

std::optional<CodeFault> CheckBlocks(const std::vector<CodeLine>& code) {
  return BlockChecker().Check(code);
}

}  // namespace gorbex::standin
