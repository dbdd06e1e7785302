#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

class CheckedGroup;
struct CheckedProject;

/// A source or resource file of one project or several.
struct CheckedSource {
  enum class State { Sound, Missing, Unreadable };

  struct Use {
    const CheckedProject* project;
    std::size_t line;
    std::string_view written;  ///< the file as the project names it
  };

  std::string path;  ///< full
  State state = State::Sound;
  std::string problem{};   ///< why it is unreadable
  std::string lineEnds{};  ///< why its lines cannot be read; empty when they can
  std::string other{};     ///< another file's name that differs in letter case only
  std::vector<Use> uses{};
};

/// Each once, in the order of the projects.
[[nodiscard]] std::deque<CheckedSource> SourcesOf(CheckedGroup& group, bool readsThem);

}  // namespace gorbex
