#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gorbex::ui {

/// The contents of the window's command line.
struct WindowArguments {
  /// The program is done already when it has said this.
  struct Reply {
    int exitStatus;
    std::string text;  ///< UTF-8, whole lines
  };

  std::optional<std::string> prefix{};
  std::string typed{};  ///< empty, "show", or a file
  std::optional<Reply> reply{};
};

enum class PrefixOption { Offered, None };

/// Reads the arguments after the program's name, in UTF-8.
[[nodiscard]] WindowArguments WindowArgumentsOf(const std::vector<std::string>& words,
                                                PrefixOption prefix);

}  // namespace gorbex::ui
