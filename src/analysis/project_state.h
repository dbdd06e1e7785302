#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// How a project is drawn in pictures of the group.
enum class ProjectState : std::uint8_t {
  None,
  Checked,  ///< the next run takes it
  OutOfDate,
  UpToDate,
  Building,
  Built,
  Failed,
  Skipped,
};

inline constexpr std::array kProjectStates = {
    ProjectState::None,     ProjectState::Checked, ProjectState::OutOfDate, ProjectState::UpToDate,
    ProjectState::Building, ProjectState::Built,   ProjectState::Failed,    ProjectState::Skipped};

/// The name for the user, such as "out of date"; "not checked" for None.
[[nodiscard]] std::string_view NameOf(ProjectState state);

/// The name that style sheets know a state by, such as "outdated".
[[nodiscard]] std::string_view ClassOf(ProjectState state);

/// Whether its box has a thick border.
[[nodiscard]] constexpr bool IsLoud(ProjectState state) {
  return state == ProjectState::Building || state == ProjectState::Failed;
}

/// Colours as 0xRRGGBB.
struct BoxColours {
  std::uint32_t fill;
  std::uint32_t border;
  std::uint32_t text;
};

/// Colours of the parts of a picture that do not depend on a state.
struct PictureColours {
  std::uint32_t paper;
  std::uint32_t band;  ///< of every other level
  std::uint32_t text;
  std::uint32_t line;
  std::uint32_t circle;
};

/// As style sheets write a colour, such as "#0b4fbf".
[[nodiscard]] std::string Hex(std::uint32_t colour);

enum class Scheme { Light, Dark };

[[nodiscard]] BoxColours ColoursOf(ProjectState state, Scheme scheme);
[[nodiscard]] PictureColours ColoursOf(Scheme scheme);

/// The sign in a box that tells the state without its colour.
enum class StateMark : std::uint8_t { None, Dot, Clock, Tick, Cross, Dash, Arrow };

[[nodiscard]] StateMark MarkOf(ProjectState state);

/// A mark as strokes between points in a square from (0, -5) to (10, 5); each stroke is a list of
/// points.
struct MarkPoint {
  double x;
  double y;
};
[[nodiscard]] std::vector<std::vector<MarkPoint>> StrokesOf(StateMark mark);

}  // namespace gorbex
