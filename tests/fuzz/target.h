#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace gorbex::test {

/// What a fuzz target is: gives one input, any bytes at all, to a reader, and requires what must
/// hold for every input. Each target's file defines it.
void ReadInput(std::string_view input);

/// Ends the program when something does not hold, saying what.
void Require(bool holds, const char* what);

/// Takes the first line, without its line feed, off an input that is more than one text.
[[nodiscard]] std::string TakeFirstLine(std::string_view& input);

/// The part of a resolved path that ".." never leaves: a drive, or a server and its share.
[[nodiscard]] std::string RootOf(std::string_view path);

/// A path followed by more ".." than it has folders, and then a name.
[[nodiscard]] std::string Climbing(std::string_view path, std::string_view name);

}  // namespace gorbex::test

/// Gives an input to ReadInput. The name and the form are the fuzzing library's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
