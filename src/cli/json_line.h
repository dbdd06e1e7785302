#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace gorbex::cli {

/// One JSON object as a line of text, for long lists: building each object in memory first would
/// take most of the time. Texts are given in the code page.
class JsonLine {
 public:
  void Add(std::string_view name, std::string_view text);
  void Add(std::string_view name, bool flag);
  void Add(std::string_view name, const std::vector<std::string>& texts);

  /// Ends the object. The text is good until the next object is begun with Add().
  [[nodiscard]] std::string_view End();

 private:
  void AddName(std::string_view name);
  void AddText(std::string_view text);
  void AddEscaped(std::string_view utf8);

  std::string line_;
  bool isEnded_ = true;
};

}  // namespace gorbex::cli
