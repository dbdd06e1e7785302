#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex::standin {

/// A line as the compiler takes it: continued lines joined, comments gone, texts emptied, split at
/// ":". Numbers count from 0 in the code view, which shows neither header nor attributes.
struct CodeLine {
  std::size_t number = 0;
  std::vector<std::string> statements;
};

/// How quoted texts are changed, so that no character of them is mistaken for code: they are
/// emptied, or each byte becomes two digits.
enum class Texts { Emptied, AsDigits };

/// The code of a source file; nothing when its header has no end. Only the first branch of
/// conditional code is read.
[[nodiscard]] std::optional<std::vector<CodeLine>> CodeView(std::string_view file,
                                                            Texts texts = Texts::Emptied);

/// The value of a line `Attribute Name = Value` above the code, without quotes; nothing when there
/// is no such line.
[[nodiscard]] std::optional<std::string> HeaderAttribute(std::string_view file,
                                                         std::string_view name);

/// The first word of a text in small letters; empty when the text begins with something else.
[[nodiscard]] std::string FirstWord(std::string_view text);

}  // namespace gorbex::standin
