#include "analysis/group_svg.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr double kLegendHeight = 28;
constexpr double kLegendMargin = 16;
constexpr double kLeastWidth = 480;

// With one decimal at most, whatever the user's language.
std::string Number(double value) {
  const long long tenths = std::llround(value * 10);
  const long long size = tenths < 0 ? -tenths : tenths;
  std::string text = (tenths < 0 ? "-" : "") + std::to_string(size / 10);
  if (size % 10 != 0) text += "." + std::to_string(size % 10);
  return text;
}

std::string Point(const PicturePoint& point) {
  return Number(point.x) + " " + Number(point.y);
}

// Classes in front of a style, so that it holds in this picture only.
std::string Rule(const std::string& what, const std::string& style) {
  return ".gorbex-group " + what + "{" + style + "}";
}

std::string ColourRules(Scheme scheme, const std::set<ProjectState>& states) {
  const PictureColours all = ColoursOf(scheme);
  std::string rules =
      Rule(".paper", "fill:" + Hex(all.paper)) + Rule(".band", "fill:" + Hex(all.band)) +
      Rule("text", "fill:" + Hex(all.text)) + Rule(".line", "stroke:" + Hex(all.line)) +
      Rule(".tip", "fill:" + Hex(all.line));
  for (const ProjectState state : states) {
    const BoxColours colours = ColoursOf(state, scheme);
    const std::string name = "." + std::string(ClassOf(state));
    rules += Rule(name + " rect", "fill:" + Hex(colours.fill) + ";stroke:" + Hex(colours.border)) +
             Rule(name + " text", "fill:" + Hex(colours.text)) +
             Rule(name + " .mark", "stroke:" + Hex(colours.text));
  }
  return rules + Rule(".circle rect", "stroke:" + Hex(all.circle)) +
         Rule(".round", "stroke:" + Hex(all.circle)) +
         Rule(".round-tip", "fill:" + Hex(all.circle));
}

std::string BorderRules(const std::set<ProjectState>& states) {
  std::string rules;
  for (const ProjectState state : states) {
    const std::string rect = "." + std::string(ClassOf(state)) + " rect";
    if (IsLoud(state)) rules += Rule(rect, "stroke-width:2.5");
    if (state == ProjectState::Skipped) rules += Rule(rect, "stroke-dasharray:4 3");
  }
  return rules;
}

std::string Styles(const std::set<ProjectState>& states) {
  const std::string font =
      "font:" + Number(kPictureTextSize) +
      "px system-ui,'Segoe UI',Roboto,'Noto Sans','DejaVu Sans',Arial,sans-serif";
  return "<style>\n" + Rule("text", font) + Rule("rect", "stroke-width:1") +
         Rule(".paper,.gorbex-group .band", "stroke:none") + Rule(".heading", "font-weight:600") +
         Rule(".line", "fill:none;stroke-width:1.2") +
         Rule(".round", "fill:none;stroke-width:1.8") + Rule(".circle rect", "stroke-width:2.5") +
         BorderRules(states) +
         Rule(".mark", "fill:none;stroke-width:1.8;stroke-linecap:round;stroke-linejoin:round") +
         Rule("path:hover", "stroke-width:3") + "\n" + ColourRules(Scheme::Light, states) +
         "\n@media screen and (prefers-color-scheme:dark){" + ColourRules(Scheme::Dark, states) +
         "}\n</style>\n";
}

std::string Rect(double x, double y, double width, double height, const std::string& attributes) {
  return "<rect x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" width=\"" + Number(width) +
         "\" height=\"" + Number(height) + "\"" + attributes + "/>";
}

std::string Text(double x, double y, const std::string& text, const std::string& attributes = "") {
  return "<text x=\"" + Number(x) + "\" y=\"" + Number(y) + "\"" + attributes + ">" +
         MarkupUtf8(text) + "</text>";
}

std::string Mark(StateMark mark, double x, double y) {
  std::string path;
  for (const auto& stroke : StrokesOf(mark)) {
    for (std::size_t i = 0; i < stroke.size(); ++i) {
      path += (i == 0 ? "M" : "L") + Point({stroke[i].x, stroke[i].y});
    }
  }
  if (path.empty()) return "";
  return "<path class=\"mark\" transform=\"translate(" + Number(x) + " " + Number(y) + ")\" d=\"" +
         path + "\"/>";
}

/// The baseline of a text that is centred at a height.
double Baseline(double middle) {
  return middle + kPictureTextSize * 0.36;
}

class Writer {
 public:
  Writer(const GroupLayout& layout, const std::vector<PictureProject>& projects,
         const std::string& title, const std::vector<ProjectState>& states)
      : layout_(layout),
        projects_(projects),
        title_(title),
        states_(states),
        width_(std::max(layout.width, kLeastWidth)) {
    for (const ProjectState state : states) shown_.insert(state);
    shown_.insert(ProjectState::None);
    hasCircle_ = std::any_of(layout.boxes.begin(), layout.boxes.end(),
                             [](const GroupBox& box) { return box.isInCircle; });
  }

  std::string Run() {
    const std::string legend = Legend();
    const std::string height = Number(height_);
    const std::string size = Number(width_) + "\" height=\"" + height;
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"gorbex-group\" role=\"img\" "
           "width=\"" +
           size + "\" viewBox=\"0 0 " + Number(width_) + " " + height + "\">\n<title>" +
           MarkupUtf8(OnOneLine(title_)) + "</title>\n<desc>" +
           MarkupUtf8(PictureSummary(layout_)) + "</desc>\n" + Styles(shown_) +
           Rect(0, 0, width_, height_, " class=\"paper\"") + "\n" + Bands() + Lines() + Boxes() +
           legend + "</svg>\n";
  }

 private:
  [[nodiscard]] ProjectState StateOf(std::size_t project) const {
    return project < states_.size() ? states_[project] : ProjectState::None;
  }

  [[nodiscard]] std::string Bands() const {
    std::string bands;
    for (std::size_t level = 0; level < layout_.levels.size(); ++level) {
      const GroupBand& band = layout_.levels[level];
      if (level % 2 == 0) {
        bands += Rect(band.x, 0, band.width, layout_.height, " class=\"band\"") + "\n";
      }
      bands += Text(band.x + 8, kPictureHeading / 2 + 9, "Level " + std::to_string(level),
                    " class=\"heading\"") +
               "\n";
    }
    return bands;
  }

  // One path for all lines to a project, which share their ways; circles come last, on top.
  [[nodiscard]] std::string Lines() const {
    std::vector<std::string> paths(layout_.boxes.size());
    std::vector<std::string> rounds(layout_.boxes.size());
    for (const GroupCurve& curve : layout_.curves) {
      std::string& path = (curve.isInCircle ? rounds : paths)[curve.used];
      path += "M" + Point(curve.start) +
              (curve.start.y == curve.end.y && !curve.isInCircle
                   ? "H" + Number(curve.end.x)
                   : "C" + Point(curve.control1) + " " + Point(curve.control2) + " " +
                         Point(curve.end));
    }
    return PathsOf(paths, "line", "tip") + PathsOf(rounds, "round", "round-tip");
  }

  [[nodiscard]] std::string PathsOf(const std::vector<std::string>& paths, const std::string& style,
                                    const std::string& tipStyle) const {
    const std::string begin = "<path class=\"" + style + "\" d=\"";
    const std::string beginTip = "<path class=\"" + tipStyle + "\" d=\"M";
    std::string all;
    for (std::size_t used = 0; used < paths.size(); ++used) {
      if (paths[used].empty()) continue;
      const GroupBox& box = layout_.boxes[used];
      const double x = box.x + box.width;
      const double y = box.y + box.height / 2 - (style == "round" ? 4 : 0);
      all.append(begin).append(paths[used]).append("\"><title>Uses of ");
      all.append(MarkupUtf8(projects_[used].name)).append("</title></path>").append(beginTip);
      all.append(Point({x, y})).append("l7 -3.5v7z\"/>\n");
    }
    return all;
  }

  [[nodiscard]] std::string Boxes() const {
    std::string boxes;
    for (std::size_t project = 0; project < layout_.boxes.size(); ++project) {
      const GroupBox& box = layout_.boxes[project];
      std::string note = projects_[project].name + "\n" + projects_[project].path + "\nLevel " +
                         std::to_string(box.level) + ", uses " + std::to_string(box.uses) +
                         ", used by " + std::to_string(box.users);
      if (box.isInCircle) note += ", in a circle";
      if (!states_.empty()) note += "\n" + std::string(NameOf(StateOf(project)));
      boxes += Box(box.x, box.y, box.width, box.height, StateOf(project), box.isInCircle,
                   projects_[project].name, note);
    }
    return boxes;
  }

  [[nodiscard]] static std::string Box(double x, double y, double width, double height,
                                       ProjectState state, bool isInCircle, const std::string& name,
                                       const std::string& note) {
    return "<g class=\"" + std::string(ClassOf(state)) + (isInCircle ? " circle" : "") + "\">" +
           (note.empty() ? "" : "<title>" + MarkupUtf8(note) + "</title>") +
           Rect(x, y, width, height, " rx=\"4\"") +
           Mark(MarkOf(state), x + kPicturePadding - 2, y + height / 2) +
           Text(x + kPicturePadding + kPictureMark, Baseline(y + height / 2), name) + "</g>\n";
  }

  /// Below the picture, in as many rows as it takes.
  std::string Legend() {
    legendX_ = kLegendMargin;
    legendY_ = layout_.height;
    std::string legend;
    if (!states_.empty()) {
      for (const ProjectState state : shown_) {
        if (state == ProjectState::None && !IsShownAsNone()) continue;
        legend += Entry(state, false, std::string(NameOf(state)));
      }
    }
    if (hasCircle_) legend += Entry(ProjectState::None, true, "in a circle");
    const std::string hint = PictureSummary(layout_);
    const double width = PictureTextWidth(hint);
    if (legendX_ > kLegendMargin && legendX_ + width > width_) NextRow();
    legend += Text(legendX_, Baseline(legendY_ + kLegendHeight / 2), hint) + "\n";
    width_ = std::max(width_, legendX_ + width + kLegendMargin);
    NextRow();
    height_ = legendY_ + kLegendMargin / 2;
    return legend;
  }

  [[nodiscard]] bool IsShownAsNone() const {
    return std::find(states_.begin(), states_.end(), ProjectState::None) != states_.end();
  }

  std::string Entry(ProjectState state, bool isInCircle, const std::string& name) {
    const double width = PictureTextWidth(name) + kPictureMark + 2 * kPicturePadding;
    if (legendX_ > kLegendMargin && legendX_ + width > width_) NextRow();
    std::string entry =
        Box(legendX_, legendY_ + 3, width, kLegendHeight - 6, state, isInCircle, name, "");
    legendX_ += width + kLegendMargin / 2;
    return entry;
  }

  void NextRow() {
    legendX_ = kLegendMargin;
    legendY_ += kLegendHeight;
  }

  const GroupLayout& layout_;
  const std::vector<PictureProject>& projects_;
  const std::string& title_;
  const std::vector<ProjectState>& states_;
  std::set<ProjectState> shown_;
  bool hasCircle_ = false;
  double width_;
  double height_ = 0;
  double legendX_ = 0;
  double legendY_ = 0;
};

}  // namespace

std::vector<PictureProject> PictureProjectsOf(const MemberCollection& members) {
  std::vector<PictureProject> projects;
  for (const auto& member : members) {
    const std::string name = member->Name.empty() ? GetFileFromPath(member->path) : member->Name;
    projects.push_back({ToUtf8(OnOneLine(name)), ToUtf8(OnOneLine(member->path))});
  }
  return projects;
}

std::string PictureSummary(const GroupLayout& layout) {
  if (layout.boxes.empty()) return "The group has no projects.";
  const auto inCircles =
      static_cast<std::size_t>(std::count_if(layout.boxes.begin(), layout.boxes.end(),
                                             [](const GroupBox& box) { return box.isInCircle; }));
  std::string text = Counted(layout.boxes.size(), "project", "projects") + " in " +
                     Counted(layout.levels.size(), "level", "levels") +
                     ", each to the right of those that it uses.";
  if (inCircles > 0) text += " " + std::to_string(inCircles) + " use one another in circles.";
  if (layout.leftOut > 0) {
    text += " " + Counted(layout.leftOut, "line is", "lines are") + " left out: others imply " +
            (layout.leftOut == 1 ? "it." : "them.");
  }
  return text;
}

std::string GroupSvg(const GroupLayout& layout, const std::vector<PictureProject>& projects,
                     const std::string& title, const std::vector<ProjectState>& states) {
  return Writer(layout, projects, title, states).Run();
}

}  // namespace gorbex
