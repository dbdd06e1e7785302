#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace gorbex {

/// A mail, or a part of one, as its header describes it. Refers to the text it was made from, which
/// outlives it.
class MimePart {
 public:
  explicit MimePart(std::string_view text);

  /// "text/plain", "multipart/mixed" and so on, in lower case.
  [[nodiscard]] const std::string& Type() const { return type_; }
  [[nodiscard]] bool IsMultipart() const { return type_.starts_with("multipart/"); }
  [[nodiscard]] bool IsAttachment() const { return isAttachment_; }
  [[nodiscard]] const std::string& CharacterSet() const { return characterSet_; }

  /// Whether lines that end in a blank go on in the next one, and whether that blank is only a
  /// mark.
  [[nodiscard]] bool IsFlowed() const { return isFlowed_; }
  [[nodiscard]] bool DropsFlowBlanks() const { return dropsFlowBlanks_; }

  /// The decoded contents.
  [[nodiscard]] std::string Contents() const;

  /// Calls back for one part after the other until an answer is true. Parts are not read ahead.
  void EachPart(const std::function<bool(const MimePart&)>& visit) const;

 private:
  void ReadType(const std::string& value);

  std::string type_ = "text/plain";
  std::string boundary_;
  std::string characterSet_;
  std::string encoding_;
  bool isAttachment_ = false;
  bool isFlowed_ = false;
  bool dropsFlowBlanks_ = false;
  std::string_view contents_;
};

}  // namespace gorbex
