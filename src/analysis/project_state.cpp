#include "analysis/project_state.h"

#include <cstdio>

namespace gorbex {
namespace {

struct Look {
  std::string_view name;
  std::string_view styleClass;
  StateMark mark;
  BoxColours light;
  BoxColours dark;
};

// In the order of the states. Texts have a contrast of at least 7 to their boxes, borders of at
// least 3 to the paper.
constexpr std::array<Look, kProjectStates.size()> kLooks = {{
    {"not checked",
     "idle",
     StateMark::None,
     {0xFFFFFF, 0x7A8594, 0x1C2330},
     {0x23272E, 0x7F8A99, 0xE6E9EE}},
    {"checked",
     "checked",
     StateMark::Dot,
     {0xE4EFFC, 0x2B6CB8, 0x10294A},
     {0x1B2F49, 0x6AA5E8, 0xDCEAFB}},
    {"out of date",
     "outdated",
     StateMark::Clock,
     {0xFFF0CC, 0x9A6A00, 0x3D2A00},
     {0x43340F, 0xD9A93A, 0xFFF0CC}},
    {"up to date",
     "fresh",
     StateMark::Tick,
     {0xEEF3EE, 0x64806A, 0x1F3324},
     {0x232D26, 0x86A08C, 0xDDEBE0}},
    {"building",
     "building",
     StateMark::Arrow,
     {0xBBD8FF, 0x0B4FBF, 0x062554},
     {0x12458C, 0x9CC7FF, 0xFFFFFF}},
    {"built",
     "built",
     StateMark::Tick,
     {0xD3F0DA, 0x1F7A36, 0x0B3517},
     {0x14401F, 0x62C57C, 0xDFF7E5}},
    {"failed",
     "failed",
     StateMark::Cross,
     {0x8C1D18, 0x5C0F0B, 0xFFFFFF},
     {0xF5B7B1, 0xFFFFFF, 0x43100C}},
    {"skipped",
     "skipped",
     StateMark::Dash,
     {0xE6E6E6, 0x6E6E6E, 0x2B2B2B},
     {0x383838, 0x9C9C9C, 0xEDEDED}},
}};

const Look& LookOf(ProjectState state) {
  return kLooks.at(static_cast<std::size_t>(state));
}

}  // namespace

std::string Hex(std::uint32_t colour) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%06x", static_cast<unsigned>(colour));
  return text.data();
}

std::string_view NameOf(ProjectState state) {
  return LookOf(state).name;
}

std::string_view ClassOf(ProjectState state) {
  return LookOf(state).styleClass;
}

StateMark MarkOf(ProjectState state) {
  return LookOf(state).mark;
}

std::vector<std::vector<MarkPoint>> StrokesOf(StateMark mark) {
  switch (mark) {
    case StateMark::Dot:
      return {{{3.5, -1.5}, {6.5, -1.5}, {6.5, 1.5}, {3.5, 1.5}, {3.5, -1.5}, {6.5, 1.5}}};
    case StateMark::Clock:
      return {{{5, -4.5}, {9, -2.2}, {9, 2.2}, {5, 4.5}, {1, 2.2}, {1, -2.2}, {5, -4.5}},
              {{5, -2}, {5, 0.3}, {7, 1.3}}};
    case StateMark::Tick:
      return {{{1, 0.5}, {4, 3.5}, {9, -3.5}}};
    case StateMark::Cross:
      return {{{1.5, -3.5}, {8.5, 3.5}}, {{8.5, -3.5}, {1.5, 3.5}}};
    case StateMark::Dash:
      return {{{1.5, 0}, {8.5, 0}}};
    case StateMark::Arrow:
      return {{{2.5, -4}, {8.5, 0}, {2.5, 4}, {2.5, -4}}};
    case StateMark::None:
      break;
  }
  return {};
}

BoxColours ColoursOf(ProjectState state, Scheme scheme) {
  const Look& look = LookOf(state);
  return scheme == Scheme::Light ? look.light : look.dark;
}

PictureColours ColoursOf(Scheme scheme) {
  return scheme == Scheme::Light ? PictureColours{0xFFFFFF, 0xF3F5F8, 0x3F4856, 0x8792A2, 0xD40000}
                                 : PictureColours{0x16191D, 0x1D2127, 0xB9C1CD, 0x66707E, 0xFF6B6B};
}

}  // namespace gorbex
