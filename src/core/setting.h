#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace gorbex {

class clsOptions;

/// A property of the settings object: how users name it, how it is stored and where it is held.
struct Setting {
  /// A text that holds the word "True" or "False".
  struct Word {
    std::string clsOptions::*held;
  };
  /// A number of jobs, which is 1 where nothing is stored.
  struct Jobs {
    std::int32_t clsOptions::*held;
  };
  /// The command of the editor.
  struct EditorCommand {
    std::string clsOptions::*held;
  };
  using Member =
      std::variant<std::string clsOptions::*, Word, bool clsOptions::*, std::int16_t clsOptions::*,
                   std::int32_t clsOptions::*, Jobs, EditorCommand>;

  std::string_view name;
  std::string_view stored;  ///< the registry value; empty for a setting that is not stored
  Member member;

  /// The value in its stored form.
  [[nodiscard]] std::string Text(const clsOptions& options) const;

  /// Takes the value from a stored text: a flag is true for "true" in any letter case, a number is
  /// what the text begins with. Error 6 when that is too large.
  void Load(clsOptions& options, const std::string& text) const;

  /// Takes the value from a text that somebody typed. Errors: 13 and 5 not a value of the property,
  /// 6 too large.
  void Take(clsOptions& options, const std::string& text) const;
};

inline constexpr std::size_t kSettings = 20;

/// Every setting once; the stored ones first, in the order in which they are loaded and saved.
[[nodiscard]] const std::array<Setting, kSettings>& AllSettings();

/// Null when there is no such setting; letter case does not matter.
[[nodiscard]] const Setting* FindSetting(std::string_view name);

}  // namespace gorbex
