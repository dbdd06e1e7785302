#pragma once

#include <wx/dnd.h>

#include <functional>

namespace gorbex::ui {

/// Drags the tree's selected project; returns when it was dropped anywhere.
void DragProject(wxWindow* source);

/// Takes a project that is dragged from the tree, and nothing else.
class ProjectDropTarget : public wxDropTarget {
 public:
  explicit ProjectDropTarget(std::function<void()> dropped);

 private:
  wxDragResult OnData(wxCoord x, wxCoord y, wxDragResult result) override;

  std::function<void()> dropped_;
};

}  // namespace gorbex::ui
