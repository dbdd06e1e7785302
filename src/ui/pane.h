#pragma once

#include <wx/panel.h>

#include "ui/caption_divider.h"
#include "ui/empty_hint.h"

namespace gorbex::ui {

/// A part of the main window: a caption above its content, with a hint in the content's place while
/// that is empty.
class Pane : public wxPanel {
 public:
  Pane(wxWindow* parent, const wxString& caption);

  /// Something that takes all of the row after the caption.
  void AddBesideCaption(wxWindow* beside);

  /// A row of fixed height between the caption and the content.
  void AddHeader(wxWindow* header);

  /// Both are children of this pane. Called once.
  void SetContent(wxWindow* content, EmptyHint* hint);

  void ShowEmpty(bool empty);

  /// Its height, in pixels, when its content has that height.
  [[nodiscard]] int HeightWith(int content) const;
  [[nodiscard]] EmptyHint& Hint() { return *hint_; }

 private:
  CaptionDivider* caption_;
  wxSizer* head_;
  wxWindow* header_ = nullptr;
  wxWindow* content_ = nullptr;
  EmptyHint* hint_ = nullptr;
};

}  // namespace gorbex::ui
