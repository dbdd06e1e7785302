#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace gorbex::cli {

/// The completions that a shell offers for a value.
struct CompletionKind {
  bool folders = false;
  bool anyFile = false;
  std::vector<std::string> extensions{};  ///< of files that fit, without dots; folders lead to them
  std::vector<std::string> words{};
};

/// The kind of an argument, or of the value of an option, by its name and type.
[[nodiscard]] CompletionKind KindOf(const CLI::Option& option);

[[nodiscard]] inline bool TakesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

/// The names of an option as they are typed, such as "-y" and "--yes".
[[nodiscard]] std::vector<std::string> TypedNames(const CLI::Option& option);

/// The options of a command that can be typed after it, with those of the commands above it; or its
/// arguments in their order.
[[nodiscard]] std::vector<const CLI::Option*> OptionsOf(const CLI::App& command);
[[nodiscard]] std::vector<const CLI::Option*> ArgumentsOf(const CLI::App& command);

[[nodiscard]] std::vector<const CLI::App*> CommandsOf(const CLI::App& app);

}  // namespace gorbex::cli
