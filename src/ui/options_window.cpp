#include "ui/options_window.h"

#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include "core/options.h"
#include "ui/icons.h"
#include "ui/spacing.h"

namespace gorbex::ui {
namespace {

constexpr int kRowGap = 6;

wxStaticText* Heading(wxPanel* page, const wxString& text) {
  auto* heading = new wxStaticText(page, wxID_ANY, text);
  heading->SetFont(heading->GetFont().Bold());
  return heading;
}

// Every page is a column of controls within a margin.
wxSizer& ContentOf(wxPanel* page) {
  return *page->GetSizer()->GetItem(std::size_t{0})->GetSizer();
}

}  // namespace

OptionsWindow::OptionsWindow(wxWindow* parent, frmOptions& form)
    : wxDialog(parent, wxID_ANY, "Build Options", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "frmOptions"),
      form_(form),
      pages_(new wxNotebook(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, "tbsOptions")) {
  SetIcons(ProgramIcons());
  MakeBuildPage();
  MakeTestProjectPage();
  MakeMailPage();
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(pages_, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kMargin)));
  sizer->Add(Buttons(),
             wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kMargin)));
  SetSizerAndFit(sizer);
  SetSize(wxSize(FromDIP(520), GetSize().y));
  CentreOnParent();

  pages_->SetSelection(form_.tbsOptions.Get());
  pages_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
    const auto page = static_cast<std::size_t>(event.GetSelection());
    if (form_.tbsOptions.Get() != page) form_.tbsOptions.Set(page);
    event.Skip();
  });
  subscriptions_.Add(form_.tbsOptions.changed,
                     [this](const std::size_t& page) { pages_->SetSelection(page); });
  subscriptions_.Add(form_.closed.changed, [this](const bool& closed) {
    if (closed) EndModal(wxID_OK);
  });
  Bind(wxEVT_CHAR_HOOK, &OptionsWindow::OnKey, this);
}

wxPanel* OptionsWindow::AddPage(const wxString& title) {
  auto* page = new wxPanel(pages_);
  auto* border = new wxBoxSizer(wxVERTICAL);
  border->Add(new wxBoxSizer(wxVERTICAL), wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kMargin)));
  page->SetSizer(border);
  pages_->AddPage(page, title);
  return page;
}

void OptionsWindow::AddCheck(wxPanel* page, const wxString& label, const wxString& name,
                             CheckBox& state) {
  auto* box = new wxCheckBox(page, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, 0,
                             wxDefaultValidator, name);
  fields_.Join(*box, state);
  ContentOf(page).Add(box, wxSizerFlags().Border(wxBOTTOM, FromDIP(kRowGap)));
}

void OptionsWindow::AddPath(wxPanel* page, const wxString& caption, const wxString& name,
                            TextBox& state, Command& browse) {
  ContentOf(page).Add(new wxStaticText(page, wxID_ANY, caption),
                      wxSizerFlags().Border(wxTOP | wxBOTTOM, FromDIP(kRowGap)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(fields_.NewField(page, name, state), wxSizerFlags(1).CentreVertical());
  row->Add(fields_.NewButton(page, browse),
           wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kRowGap)));
  ContentOf(page).Add(row, wxSizerFlags().Expand());
}

void OptionsWindow::MakeBuildPage() {
  wxPanel* page = AddPage("Build");
  AddCheck(page, "&Get latest sources before building", "chkGetLatest", form_.chkGetLatest);
  AddCheck(page, "&Keep binary compatibility", "chkCompatability", form_.chkCompatability);
  AddCheck(page, "&Update references to rebuilt projects", "chkChangeRefs", form_.chkChangeRefs);
  AddCheck(page, "Build d&ependent projects too (stored, but no build acts on it)",
           "chkAutoDependant", form_.chkAutoDependant);
  AddCheck(page, "Ask to continue after each &failed project", "chkStopOnErrors",
           form_.chkStopOnErrors);
  AddCheck(page, "&Skip projects that use one that failed in the same run", "chkSkipUsers",
           form_.chkSkipUsers);
  AddCheck(page, "Skip &projects that are up to date", "chkSkipUpToDate", form_.chkSkipUpToDate);
  AddCheck(page, "&Debug build (no optimization, symbolic debug information)", "chkDebug",
           form_.chkDebug);
  AddJobs(page);
  AddPath(page, "Build fo&lder:", "txtBuildPath", form_.txtBuildPath, form_.cmdBrowse);
  AddEditor(page);
}

void OptionsWindow::AddEditor(wxPanel* page) {
  wxSizer& content = ContentOf(page);
  content.Add(new wxStaticText(page, wxID_ANY, "Ed&itor that opens sources:"),
              wxSizerFlags().Border(wxTOP | wxBOTTOM, FromDIP(kRowGap)));
  content.Add(fields_.NewField(page, "txtEditor", form_.txtEditor), wxSizerFlags().Expand());
  content.Add(new wxStaticText(page, wxID_ANY,
                               "Such as: code --goto %FILE%:%LINE%\n"
                               "Empty: the program that the system opens a file with"),
              wxSizerFlags().Border(wxTOP, FromDIP(kRowGap)));
}

void OptionsWindow::AddJobs(wxPanel* page) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticText(page, wxID_ANY, "Projects built at the same &time:"),
           wxSizerFlags().CentreVertical());
  auto* jobs = new wxSpinCtrl(page, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS,
                              0, kMostJobs, form_.spnJobs.Get(), "spnJobs");
  fields_.Join(*jobs, form_.spnJobs);
  row->Add(jobs, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kRowGap)));
  row->Add(new wxStaticText(page, wxID_ANY, "(0: as many as there are processors)"),
           wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kRowGap)));
  ContentOf(page).Add(row, wxSizerFlags().Border(wxTOP, FromDIP(kRowGap)));
}

void OptionsWindow::MakeTestProjectPage() {
  wxPanel* page = AddPage("Test Project");
  AddCheck(page, "&Offer to start a test project after a build", "chkAutoLaunchVBP",
           form_.chkAutoLaunchVBP);
  AddPath(page, "&Project file:", "txtVBPName", form_.txtVBPName, form_.cmdBrowseVBP);
}

void OptionsWindow::AddReplyChoice(wxPanel* page, const wxString& label, const wxString& name,
                                   std::size_t index) {
  auto* choice = new wxRadioButton(page, wxID_ANY, label, wxDefaultPosition, wxDefaultSize,
                                   index == 0 ? wxRB_GROUP : 0, wxDefaultValidator, name);
  choice->SetValue(form_.optReply.Get() == index);
  choice->Bind(wxEVT_RADIOBUTTON, [this, index](wxCommandEvent&) { form_.optReply.Set(index); });
  ContentOf(page).Add(choice, wxSizerFlags().Border(wxBOTTOM, FromDIP(kRowGap)));
}

void OptionsWindow::MakeMailPage() {
  wxPanel* page = AddPage("Mail Requests");
  wxSizer& content = ContentOf(page);
  AddCheck(page, "&Start checking the inbox when the program starts", "chkAutoStart",
           form_.chkAutoStart);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticText(page, wxID_ANY, "&Check every"), wxSizerFlags().CentreVertical());
  const wxSize size(GetTextExtent("00000000").x + FromDIP(20), -1);
  row->Add(fields_.NewField(page, "txtInterval", form_.txtInterval, wxTE_RIGHT, size),
           wxSizerFlags().CentreVertical().Border(wxLEFT | wxRIGHT, FromDIP(kRowGap)));
  row->Add(new wxStaticText(page, wxID_ANY, "seconds, 60 at most"),
           wxSizerFlags().CentreVertical());
  content.Add(row, wxSizerFlags().Border(wxBOTTOM, FromDIP(kMargin)));
  content.Add(Heading(page, "Replies about errors go to"),
              wxSizerFlags().Border(wxBOTTOM, FromDIP(kRowGap)));
  AddReplyChoice(page, "the &sender of the request", "optReply0", 0);
  AddReplyChoice(page, "this &address:", "optReply1", 1);
  content.Add(fields_.NewField(page, "txtErrorUser", form_.txtErrorUser),
              wxSizerFlags().Expand().Border(wxLEFT, FromDIP(24)));
}

wxSizer* OptionsWindow::Buttons() {
  auto* ok = fields_.NewButton(this, form_.cmdOK, wxID_OK);
  auto* cancel = new wxButton(this, wxID_CANCEL, {}, wxDefaultPosition, wxDefaultSize, 0,
                              wxDefaultValidator, "cmdCancel");
  auto* apply = fields_.NewButton(this, form_.cmdApply, wxID_APPLY);
  ok->SetDefault();
  auto* buttons = new wxStdDialogButtonSizer;
  for (auto* button : {ok, cancel, apply}) buttons->AddButton(button);
  buttons->Realize();
  return buttons;
}

// The dialog's own keys first; what it does with them shows in its state.
void OptionsWindow::OnKey(wxKeyEvent& event) {
  const bool isTab = event.GetKeyCode() == WXK_TAB;
  form_.keyDown.Emit({isTab ? KeyCode::Tab : KeyCode::Other, event.ControlDown(), event.ShiftDown(),
                      event.AltDown()});
  const bool isNextPage = isTab && event.ControlDown() && !event.ShiftDown();
  if (!isNextPage) event.Skip();
}

}  // namespace gorbex::ui
