#pragma once

#include <ostream>
#include <streambuf>

namespace gorbex::cli {

/// A stream over another one that lets no text pass as a command of a build server: names in
/// project files and the words of compilers are printed, and strangers may have chosen them. It
/// puts a blank into "##", and a "." before a line that begins with "::".
class CommandGuard : public std::ostream {
 public:
  explicit CommandGuard(std::ostream& to) : std::ostream(&buffer_), buffer_(to) {}

  /// While the flag is set, the output is JSON, and "##" is written as "#\u0023".
  void FollowJson(const bool& isJson) { buffer_.isJson = &isJson; }

 private:
  class Buffer : public std::streambuf {
   public:
    explicit Buffer(std::ostream& to) : to_(to) {}

    const bool* isJson = nullptr;

   protected:
    int_type overflow(int_type letter) override;
    int sync() override;

   private:
    void Put(char letter);

    std::ostream& to_;
    bool isAfterHash_ = false;
    bool isAtStart_ = true;     ///< of a line, but for blanks
    bool isColonHeld_ = false;  ///< the first of a line; the next letter decides
  };

  Buffer buffer_;
};

}  // namespace gorbex::cli
