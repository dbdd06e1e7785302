#include "analysis/picture_view.h"

#include <algorithm>

namespace gorbex {
namespace {

constexpr double kLargest = 4;
constexpr double kSmallest = 0.05;

// A picture that is smaller than the window is in its middle; of a larger one, no more than a
// margin beside it is shown.
double Kept(double left, double picture, double window) {
  const double room = window - picture;
  if (room >= 0) return -room / 2;
  const double margin = window / 3;
  return std::clamp(left, -margin, -room + margin);
}

double Revealed(double left, double from, double to, double window) {
  if (to - from > window || from < left) return from;
  return std::max(left, to - window);
}

}  // namespace

void PictureView::SetPicture(double width, double height) {
  width_ = width;
  height_ = height;
  isFitted_ ? Fit() : KeepInSight();
}

void PictureView::SetWindow(double width, double height) {
  windowWidth_ = width;
  windowHeight_ = height;
  isFitted_ ? Fit() : KeepInSight();
}

double PictureView::FittingScale() const {
  if (width_ <= 0 || height_ <= 0) return full_;
  return std::min({full_, windowWidth_ / width_, windowHeight_ / height_});
}

void PictureView::Fit() {
  isFitted_ = true;
  scale_ = std::max(FittingScale(), full_ / 1000);
  left_ = {};
  KeepInSight();
}

void PictureView::Zoom(double factor, const PicturePoint& window) {
  isFitted_ = false;
  const PicturePoint kept = ToPicture(window);
  const double smallest = std::min(FittingScale(), full_ * kSmallest);
  scale_ = std::clamp(scale_ * factor, smallest, full_ * kLargest);
  left_ = {kept.x - window.x / scale_, kept.y - window.y / scale_};
  KeepInSight();
}

void PictureView::Move(double x, double y) {
  isFitted_ = false;
  left_ = {left_.x - x / scale_, left_.y - y / scale_};
  KeepInSight();
}

void PictureView::Reveal(const GroupBox& box) {
  constexpr double kAround = 24;
  left_.x = Revealed(left_.x, box.x - kAround, box.x + box.width + kAround, windowWidth_ / scale_);
  left_.y = Revealed(left_.y, box.y - kAround - kPictureHeading, box.y + box.height + kAround,
                     windowHeight_ / scale_);
  KeepInSight();
}

PicturePoint PictureView::ToPicture(const PicturePoint& window) const {
  return {left_.x + window.x / scale_, left_.y + window.y / scale_};
}

PicturePoint PictureView::ToWindow(const PicturePoint& picture) const {
  return {(picture.x - left_.x) * scale_, (picture.y - left_.y) * scale_};
}

void PictureView::KeepInSight() {
  left_.x = Kept(left_.x, width_, windowWidth_ / scale_);
  left_.y = Kept(left_.y, height_, windowHeight_ / scale_);
}

}  // namespace gorbex
