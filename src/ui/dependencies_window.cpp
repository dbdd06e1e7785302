#include "ui/dependencies_window.h"

#include <wx/dcbuffer.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/wrapsizer.h>

#include <algorithm>
#include <memory>

#include "ui/layout_store.h"
#include "ui/observe.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"
#include "ui/window_place.h"

namespace gorbex::ui {
namespace {

constexpr const char* kDependenciesPanes = "DependenciesPanes";
constexpr double kPictureShare = 0.72;
const wxSize kFirstDependenciesSize(1600, 960);

/// A box of the picture, to explain its look.
class Sample : public wxWindow {
 public:
  Sample(wxWindow* parent, ProjectState state, bool isInCircle)
      : state_(state), isInCircle_(isInCircle) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(wxSize(28, 18)), wxBORDER_NONE);
    SetMinSize(GetSize());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
  }

  [[nodiscard]] bool AcceptsFocus() const override { return false; }

 private:
  void Paint() {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
    dc.Clear();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (context == nullptr) return;
    const double pixels = FromDIP(100) / 100.0;
    context->Scale(pixels, pixels);
    PictureDrawing(*context, pixels).DrawBox({1.5, 1.5, 25, 15}, state_, isInCircle_, false);
  }

  ProjectState state_;
  bool isInCircle_;
};

}  // namespace

DependenciesWindow::DependenciesWindow(wxWindow* parent, frmDependencies& form,
                                       DependencyPicture& picture, RegistryTools& registry,
                                       CommandIds& ids)
    : FormWindow(parent, "Dependencies", "frmDependencies", form.visible,
                 [&form] { form.cmdClose.Execute(); }),
      form_(form),
      picture_(picture),
      registry_(registry),
      columns_(NewSplitter(this, 150, kPictureShare)) {
  picturePane_ = PicturePane(ids);
  listPane_ = ListPane(ids);
  columns_->SplitVertically(picturePane_, listPane_);
  const auto find = [this](const wxString& wanted, FindBar::Direction direction) {
    const auto hit = picture_.Find(FromWx(wanted), direction);
    canvas_->ShowSelected();
    return hit;
  };
  find_ = new FindBar(this, {{canvas_, "Find:", find}}, "Name or path");
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(columns_, wxSizerFlags(1).Expand());
  sizer->Add(find_, wxSizerFlags().Expand());
  sizer->Add(Legend(), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, FromDIP(kMargin)));
  sizer->Add(Buttons(), wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  wxSize least(560, 360);
  least.IncTo(ToDIP(wxSize(find_->GetBestSize().x, -1)));
  SetContents(sizer, least);
  RememberPlace(registry_, "Dependencies");
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const bool isRefresh = event.GetKeyCode() == WXK_F5;
    if (isRefresh) picture_.Refresh();
    event.Skip(!isRefresh && !find_->Takes(event));
  });
  FollowState();
}

DependenciesWindow::~DependenciesWindow() {
  if (form_.visible.Get()) StorePanes();
}

Pane* DependenciesWindow::PicturePane(CommandIds& ids) {
  auto* pane = new Pane(columns_, "Picture");
  canvas_ = new DependencyCanvas(pane, picture_, [this] { form_.projectActivated.Emit(); });
  pane->SetContent(canvas_, ids,
                   "No project is open. Open a build project to see which of its projects uses "
                   "which.");
  return pane;
}

Pane* DependenciesWindow::ListPane(CommandIds& ids) {
  auto* pane = new Pane(columns_, "Projects");
  list_ = new StateList(pane, "lvwDependencies", form_.lvwProjects,
                        {{"Project", 130, false, 5},
                         {"Level", 36, false, 4, true},
                         {"State", 64, false, 4, true},
                         {"Uses", 40, true, 2, true},
                         {"Used by", 50, true, 1, true}});
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { form_.projectActivated.Emit(); });
  auto* details = new wxTextCtrl(pane, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                 wxTE_MULTILINE | wxTE_READONLY, wxDefaultValidator, "txtDetails");
  details->SetMinSize(wxSize(-1, 7 * details->GetCharHeight()));
  subscriptions_.Add(form_.txtDetails.text.changed,
                     [details](const std::string& text) { details->ChangeValue(ToWx(text)); });
  pane->SetContent(list_, ids, "Each project with its level and state.");
  pane->GetSizer()->Add(details, wxSizerFlags().Expand().Border(wxALL, FromDIP(kGap) / 2));
  return pane;
}

wxSizer* DependenciesWindow::Legend() {
  auto* legend = new wxWrapSizer(wxHORIZONTAL, wxWRAPSIZER_DEFAULT_FLAGS);
  const auto add = [&](ProjectState state, bool isInCircle, const wxString& text) {
    auto* entry = new wxBoxSizer(wxHORIZONTAL);
    entry->Add(new Sample(this, state, isInCircle), wxSizerFlags().CentreVertical());
    entry->Add(new wxStaticText(this, wxID_ANY, text),
               wxSizerFlags().CentreVertical().Border(wxLEFT | wxRIGHT, FromDIP(kGap) / 2));
    legend->Add(entry, wxSizerFlags().Border(wxRIGHT, FromDIP(kGap)));
  };
  for (const ProjectState state : kProjectStates) {
    const std::string_view name = NameOf(state);
    add(state, false, wxString::FromUTF8(name.data(), name.size()));
  }
  add(ProjectState::None, true, "in a circle");
  return legend;
}

wxSizer* DependenciesWindow::Buttons() {
  auto* zoom = new wxBoxSizer(wxHORIZONTAL);
  AddButton(*zoom, "&Fit", "cmdFit", [this] { canvas_->ShowWhole(); });
  AddButton(*zoom, "&100 %", "cmdFull", [this] { canvas_->ShowFull(); });
  wxSizer* row = Foot(&form_.summary, {&form_.cmdOutdated, &form_.cmdClose});
  row->Insert(1, zoom);
  return row;
}

void DependenciesWindow::FollowState() {
  Observe(*this, wxEVT_IDLE, [this] {
    picture_.CatchUp();
    ShowEmptyPanes();
  });
  // The picture shows the project that the list or the main window selects.
  subscriptions_.Add(picture_.restated, [this] {
    if (picture_.Selected() == revealed_) return;
    revealed_ = picture_.Selected();
    if (!canvas_->HasFocus()) canvas_->ShowSelected();
  });
  subscriptions_.Add(form_.visible.changed, [this](const bool& visible) {
    ShowEmptyPanes();
    if (visible && canvas_->IsShown()) canvas_->SetFocus();
    if (!visible) StorePanes();
  });
}

void DependenciesWindow::ShowEmptyPanes() {
  for (Pane* pane : {picturePane_, listPane_}) pane->ShowEmpty(picture_.Projects().empty());
}

// The picture of a small group leaves no room empty.
wxSize DependenciesWindow::FirstSize() const {
  constexpr int kLeastHeight = 520;
  constexpr int kBeside = 240;
  const GroupLayout& layout = picture_.Layout();
  const double scale = std::min(1.0, kFirstDependenciesSize.x * kPictureShare / layout.width);
  const int height = static_cast<int>(std::min(layout.height * scale, 5000.0)) + kBeside;
  return {kFirstDependenciesSize.x, std::clamp(height, kLeastHeight, kFirstDependenciesSize.y)};
}

void DependenciesWindow::Place() {
  wxRect screen = wxDisplay(GetParent()).GetClientArea();
  SetSize(InTheMiddle(FromDIP(FirstSize()), screen.Deflate(FromDIP(kMargin))));
}

void DependenciesWindow::HasPlace() {
  Layout();
  const auto sash = LayoutStore(registry_).Read(kDependenciesPanes, 2);
  const double share = sash.empty() ? kPictureShare : static_cast<double>(sash[0]) / sash[1];
  columns_->SetSashPosition(static_cast<int>(columns_->GetClientSize().x * share));
}

void DependenciesWindow::StorePanes() {
  if (IsIconized() || IsMaximized()) return;
  LayoutStore(registry_).Write(
      kDependenciesPanes, {ToDIP(columns_->GetSashPosition()), ToDIP(columns_->GetClientSize().x)});
}

}  // namespace gorbex::ui
