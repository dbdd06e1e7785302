#include "compiler/declarations.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "compiler/source_text.h"
#include "platform/code_page.h"
#include "platform/header_fields.h"
#include "platform/plain_text.h"

namespace gorbex::standin {
namespace {

/// A statement that is taken apart from its front.
class Words {
 public:
  explicit Words(std::string_view text) : rest_(text) {}

  [[nodiscard]] std::string_view Rest() const { return rest_; }

  /// The next word as it is written; empty when something else is there.
  std::string Take() {
    const auto length = FirstWord(rest_).size();
    std::string word(rest_.substr(0, length));
    rest_ = Trimmed(rest_.substr(length));
    return word;
  }

  bool TakeIf(std::string_view word) {
    if (FirstWord(rest_) != word) return false;
    Take();
    return true;
  }

  /// The text in the brackets that begin here; nothing when none do or they have no end.
  std::optional<std::string_view> TakeBrackets() {
    if (!rest_.starts_with('(')) return std::nullopt;
    std::size_t depth = 0;
    for (std::size_t i = 0; i < rest_.size(); ++i) {
      if (rest_[i] == '(') ++depth;
      if (rest_[i] != ')' || --depth > 0) continue;
      const auto inside = Trimmed(rest_.substr(1, i - 1));
      rest_ = Trimmed(rest_.substr(i + 1));
      return inside;
    }
    return std::nullopt;
  }

 private:
  std::string_view rest_;
};

// Splits at the commas outside brackets.
std::vector<std::string_view> Parts(std::string_view list) {
  std::vector<std::string_view> parts;
  std::size_t depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (list[i] == '(') ++depth;
    if (list[i] == ')' && depth > 0) --depth;
    if (list[i] != ',' || depth > 0) continue;
    parts.push_back(Trimmed(list.substr(start, i - start)));
    start = i + 1;
  }
  if (!list.empty()) parts.push_back(Trimmed(list.substr(start)));
  return parts;
}

// The type that a sign after a name means.
std::string_view TypeOfSign(char sign) {
  constexpr std::string_view kSigns = "%&!#@$";
  constexpr std::array<std::string_view, 6> kTypes = {"Integer", "Long",     "Single",
                                                      "Double",  "Currency", "String"};
  const auto number = kSigns.find(sign);
  return number < kTypes.size() ? kTypes[number] : std::string_view();
}

// "As New Library.Class" in front, or nothing.
std::string TakeType(Words& words) {
  if (!words.TakeIf("as")) return {};
  words.TakeIf("new");
  auto type = words.Take();
  while (words.Rest().starts_with('.')) {
    words = Words(Trimmed(words.Rest().substr(1)));
    type = words.Take();
  }
  return type;
}

std::string TakeSign(Words& words) {
  const auto type = words.Rest().empty() ? std::string_view() : TypeOfSign(words.Rest().front());
  if (!type.empty()) words = Words(Trimmed(words.Rest().substr(1)));
  return std::string(type);
}

// A variable or a parameter. It has no name when it is an array or not understood.
DeclaredField ReadVariable(std::string_view text) {
  Words words(text);
  DeclaredField declared{words.Take(), ""};
  declared.type = TakeSign(words);
  if (words.TakeBrackets()) return {};
  if (declared.type.empty()) declared.type = TakeType(words);
  return declared;
}

std::optional<std::int32_t> Number(std::string_view text) {
  const bool isHexadecimal = UpperCase(text.substr(0, 2)) == "&H";
  if (isHexadecimal) text.remove_prefix(2);
  if (isHexadecimal && text.ends_with('&')) text.remove_suffix(1);
  const auto number = WholeNumber<std::int64_t>(text, isHexadecimal ? 16 : 10);
  if (!number || *number > 0xFFFFFFFF) return std::nullopt;
  return static_cast<std::int32_t>(*number);
}

// As written, but for the width of its gaps.
std::string Folded(std::string_view statement) {
  std::string folded;
  for (const char letter : statement) {
    const bool isBlank = letter == ' ' || letter == '\t';
    if (!isBlank) folded += letter;
    if (isBlank && !folded.ends_with(' ')) folded += ' ';
  }
  return folded;
}

void AddLine(std::string& text, std::string_view statement) {
  if (!text.empty()) text += "; ";
  text += Folded(statement);
}

DeclaredMethod::Parameter ReadParameter(std::string_view text) {
  Words words(text);
  const bool isOptional = words.TakeIf("optional");
  words.TakeIf("paramarray");
  const bool isByRef = !words.TakeIf("byval");
  words.TakeIf("byref");
  return {ReadVariable(words.Rest()), isByRef, isOptional};
}

class DeclarationReader {
 public:
  void Read(std::string_view statement) {
    Words words(statement);
    if (inside_ == Inside::Enum) return ReadConstant(words);
    if (inside_ == Inside::Record) return ReadField(words);
    statement_ = statement;
    const bool isPublic = words.TakeIf("public");
    isOpen_ = isPublic || !(words.TakeIf("private") || words.TakeIf("friend"));
    words.TakeIf("static");
    if (words.TakeIf("enum")) return BeginEnum(words.Take());
    if (words.TakeIf("type")) return BeginRecord(words.Take());
    if (!isOpen_) return;
    if (words.TakeIf("property")) {
      ReadProcedure(words);
    } else if (words.TakeIf("event") || words.TakeIf("implements")) {
      AddLine(found_.events, statement);
    } else if (words.TakeIf("sub")) {
      ReadMethod(words, DeclaredMethod::Kind::Call, false);
    } else if (words.TakeIf("function")) {
      ReadMethod(words, DeclaredMethod::Kind::Call, true);
    } else if (isPublic) {
      ReadVariables(words);
    }
  }

  // The value of "Attribute Name.VB_UserMemId = 0".
  void ReadMemberId(std::string_view line) {
    constexpr std::string_view kMark = ".VB_UserMemId = ";
    Words words(line);
    if (!words.TakeIf("attribute")) return;
    const auto name = words.Take();
    if (!words.Rest().starts_with(kMark)) return;
    const auto id = Number(Trimmed(words.Rest().substr(kMark.size())));
    if (auto* const property = Find(name)) property->id = id;
    for (auto& method : found_.methods) {
      if (EqualsIgnoringCase(method.name, name)) method.id = id;
    }
  }

  Declarations Take() { return std::move(found_); }

 private:
  enum class Inside { Code, Enum, Record };

  void BeginEnum(const std::string& name) {
    inside_ = Inside::Enum;
    next_ = 0;
    if (isOpen_) found_.enums.push_back({name, {}});
  }

  // A constant without a value has the next number.
  void ReadConstant(Words words) {
    const auto name = words.Take();
    if (EqualsIgnoringCase(name, "end")) {
      inside_ = Inside::Code;
      return;
    }
    if (words.Rest().starts_with('=')) {
      next_ = Number(Trimmed(words.Rest().substr(1)));
      if (!next_ && isOpen_) {
        AddLine(found_.enums.back().expressions, name + " " + std::string(words.Rest()));
      }
    }
    if (!next_ || name.empty()) return;
    if (isOpen_) found_.enums.back().constants.push_back({name, *next_});
    next_ = *next_ == INT32_MAX ? std::nullopt : std::optional(*next_ + 1);
  }

  void BeginRecord(const std::string& name) {
    inside_ = Inside::Record;
    if (isOpen_) found_.records.push_back({name, {}, {}});
  }

  void ReadField(const Words& words) {
    if (FirstWord(words.Rest()) == "end") {
      inside_ = Inside::Code;
      return;
    }
    if (!isOpen_) return;
    auto& record = found_.records.back();
    AddLine(record.text, words.Rest());
    auto field = ReadVariable(words.Rest());
    if (!field.name.empty()) record.fields.push_back(std::move(field));
  }

  void ReadMethod(Words words, DeclaredMethod::Kind kind, bool hasResult) {
    DeclaredMethod method{kind, words.Take()};
    auto type = TakeSign(words);
    const auto brackets = words.TakeBrackets();
    for (const auto part : Parts(brackets.value_or(std::string_view()))) {
      method.parameters.push_back(ReadParameter(part));
    }
    if (hasResult) method.result = type.empty() ? TakeType(words) : type;
    method.text = Folded(statement_);
    found_.methods.push_back(std::move(method));
  }

  void ReadProcedure(const Words& procedure) {
    Words words = procedure;
    const auto kind = LowerCase(words.Take());
    const Words afterKind = words;
    const auto name = words.Take();
    auto type = TakeSign(words);
    const auto brackets = words.TakeBrackets();
    const auto parameters = Parts(brackets.value_or(std::string_view()));
    const bool isGet = kind == "get";
    if (parameters.size() != (isGet ? 0 : 1)) {
      using Kind = DeclaredMethod::Kind;
      const Kind other = kind == "set" ? Kind::Set : Kind::Let;
      return ReadMethod(afterKind, isGet ? Kind::Get : other, isGet);
    }
    if (isGet && type.empty()) type = TakeType(words);
    if (!isGet) type = ReadParameter(parameters.front()).field.type;
    auto& property = Property(name, type);
    AddLine(property.text, statement_);
    if (isGet) property.isReadable = true;
    if (kind == "let") property.isWritable = true;
    if (kind == "set") property.isSettable = true;
  }

  void ReadVariables(Words words) {
    for (const auto* other : {"const", "declare", "event", "function", "sub", "type"}) {
      if (words.TakeIf(other)) return;
    }
    words.TakeIf("withevents");
    for (const auto part : Parts(words.Rest())) {
      const auto declared = ReadVariable(part);
      if (declared.name.empty()) continue;
      auto& property = Property(declared.name, declared.type);
      property.isVariable = true;
      AddLine(property.text, part);
    }
  }

  DeclaredProperty* Find(std::string_view name) {
    const auto found = std::find_if(
        found_.properties.begin(), found_.properties.end(),
        [&](const DeclaredProperty& each) { return EqualsIgnoringCase(each.name, name); });
    return found == found_.properties.end() ? nullptr : &*found;
  }

  DeclaredProperty& Property(const std::string& name, const std::string& type) {
    if (auto* const known = Find(name)) return *known;
    found_.properties.push_back({name, type});
    return found_.properties.back();
  }

  Declarations found_;
  std::string_view statement_;
  Inside inside_ = Inside::Code;
  bool isOpen_ = false;  ///< to other projects, as the statement at hand or the type around it
  std::optional<std::int32_t> next_ = 0;
};

}  // namespace

Declarations ReadDeclarations(std::string_view file) {
  DeclarationReader reader;
  const auto code = CodeView(file, Texts::AsDigits);
  if (!code) return {};
  for (const auto& line : *code) {
    for (const auto& statement : line.statements) reader.Read(statement);
  }
  while (!file.empty()) reader.ReadMemberId(TakeLine(file));
  return reader.Take();
}

}  // namespace gorbex::standin
