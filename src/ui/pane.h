#pragma once

#include <wx/panel.h>
#include <wx/splitter.h>

#include <vector>

#include "ui/caption_divider.h"
#include "ui/command_ids.h"

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

  /// Takes a child of this pane, and makes the hint: a sentence, and buttons for what to do first.
  /// Called once; the commands must outlive the pane.
  void SetContent(wxWindow* content, CommandIds& ids, const wxString& text,
                  const std::vector<Command*>& commands = {});

  void ShowEmpty(bool empty);

  /// Its height, in pixels, when its content has that height.
  [[nodiscard]] int HeightWith(int content) const;
  [[nodiscard]] wxWindow& Hint() { return *hint_; }

 private:
  CaptionDivider* caption_;
  wxSizer* head_;
  wxWindow* header_ = nullptr;
  wxWindow* content_ = nullptr;
  wxWindow* hint_ = nullptr;
};

/// A splitter for panes. None becomes smaller than `least` (DIP); of a change of the size the first
/// pane takes the share `gravity`.
[[nodiscard]] wxSplitterWindow* NewSplitter(wxWindow* parent, int least, double gravity = 0);

}  // namespace gorbex::ui
