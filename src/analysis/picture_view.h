#pragma once

#include "analysis/group_layout.h"

namespace gorbex {

/// The part of a picture that a window shows, and its size. The window's lengths are pixels.
class PictureView {
 public:
  /// How many pixels one unit of the picture has at 100 %.
  explicit PictureView(double pixels = 1) : full_(pixels), scale_(pixels) {}

  void SetPicture(double width, double height);
  void SetWindow(double width, double height);

  /// Shows all of the picture, no larger than at 100 %. A view that was fitted stays so when sizes
  /// change, until it is moved or zoomed.
  void Fit();

  /// Shows the picture at 100 %; its middle stays in the middle.
  void ShowFull() { Zoom(full_ / scale_, {windowWidth_ / 2, windowHeight_ / 2}); }

  /// Makes it larger or smaller around a point of the window.
  void Zoom(double factor, const PicturePoint& window);

  /// Moves the picture as a hand that drags it.
  void Move(double x, double y);

  /// Moves as little as it takes to show a box whole, with some room around it.
  void Reveal(const GroupBox& box);

  [[nodiscard]] double Scale() const { return scale_; }
  [[nodiscard]] PicturePoint ToPicture(const PicturePoint& window) const;
  [[nodiscard]] PicturePoint ToWindow(const PicturePoint& picture) const;

 private:
  [[nodiscard]] double FittingScale() const;
  void KeepInSight();

  double full_;
  double scale_;       ///< pixels for a unit
  PicturePoint left_;  ///< of the picture, at the window's upper left corner
  double width_ = 0;   ///< of the picture
  double height_ = 0;
  double windowWidth_ = 0;
  double windowHeight_ = 0;
  bool isFitted_ = true;
};

}  // namespace gorbex
