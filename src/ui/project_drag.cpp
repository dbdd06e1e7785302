#include "ui/project_drag.h"

#include <wx/utils.h>

#include <string>
#include <utility>

namespace gorbex::ui {
namespace {

const wxDataFormat& ProjectFormat() {
  static const wxDataFormat format("application/x-gorbexbuilder-tree-project");
  return format;
}

// The tree's selection says which project is dragged, so a drag from another program's tree says
// nothing to us.
std::string OwnName() {
  return std::to_string(wxGetProcessId());
}

}  // namespace

void DragProject(wxWindow* source) {
  wxCustomDataObject data(ProjectFormat());
  const std::string sender = OwnName();
  data.SetData(sender.size(), sender.data());
  wxDropSource drag(data, source);
  drag.DoDragDrop(wxDrag_CopyOnly);
}

ProjectDropTarget::ProjectDropTarget(std::function<void()> dropped)
    : wxDropTarget(new wxCustomDataObject(ProjectFormat())), dropped_(std::move(dropped)) {}

wxDragResult ProjectDropTarget::OnData(wxCoord /*x*/, wxCoord /*y*/, wxDragResult result) {
  if (!GetData()) return wxDragNone;
  const auto& data = dynamic_cast<const wxCustomDataObject&>(*GetDataObject());
  const std::string sender(static_cast<const char*>(data.GetData()), data.GetSize());
  if (sender != OwnName()) return wxDragNone;
  dropped_();
  return result;
}

}  // namespace gorbex::ui
