#include "ui/run_status_bar.h"

#include <algorithm>

#include "ui/elapsed_time.h"
#include "ui/observe.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

enum Panel { kStatus, kUnsaved, kCount, kGauge, kTime, kProblems };

constexpr int kEmptyWidth = 6;  // the toolkit draws nothing narrower right

}  // namespace

RunStatusBar::RunStatusBar(wxWindow* parent, frmBuilder& window, RunEvents& events)
    : wxStatusBar(parent, wxID_ANY, wxSTB_DEFAULT_STYLE, "stbStatus"),
      gauge_(new wxGauge(this, wxID_ANY, 1, wxDefaultPosition, wxDefaultSize,
                         wxGA_HORIZONTAL | wxGA_SMOOTH, wxDefaultValidator, "progress")),
      timer_(this) {
  widths_ = {-1, kEmptyWidth, kEmptyWidth, kEmptyWidth, kEmptyWidth, kEmptyWidth};
  SetFieldsCount(static_cast<int>(widths_.size()), widths_.data());
  const std::vector<int> styles(widths_.size(), wxSB_FLAT);
  SetStatusStyles(static_cast<int>(styles.size()), styles.data());
  gauge_->Hide();
  SetStatusText(ToWx(window.stbStatus.Get()), kStatus);
  subscriptions_.Add(window.stbStatus.changed,
                     [this](const std::string& text) { SetStatusText(ToWx(text), kStatus); });
  // Nothing is known yet of another build project.
  subscriptions_.Add(window.tvwProjects.cleared, [this] {
    for (const int field : {kCount, kTime, kProblems}) SetStatusText({}, field);
  });
  subscriptions_.Add(events, [this](const RunEvent& event) { Hear(event); });
  Observe(*this, wxEVT_SIZE, [this] { PlaceGauge(); });
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) { ShowTime(); });
}

void RunStatusBar::DoUpdateStatusText(int field) {
  FitFields();
  wxStatusBar::DoUpdateStatusText(field);
}

// The status text has all room that the others do not need. A field that shows something does not
// become narrower, so that a time does not move it to and fro.
void RunStatusBar::FitFields() {
  constexpr int kGaugeWidth = 140;
  std::vector<int> widths = widths_;
  for (std::size_t i = 1; i < widths.size(); ++i) {
    const wxString text = GetStatusText(static_cast<int>(i));
    // The last field shares its room with the grip of the window.
    const int margin = FromDIP(i + 1 < widths.size() ? 16 : 32);
    const int needed = text.empty() ? FromDIP(kEmptyWidth) : GetTextExtent(text).x + margin;
    widths[i] = text.empty() ? needed : std::max(needed, widths[i]);
  }
  if (gauge_->IsShown()) widths[kGauge] = std::max(widths[kGauge], FromDIP(kGaugeWidth));
  if (widths == widths_) return;
  widths_ = widths;
  SetStatusWidths(static_cast<int>(widths_.size()), widths_.data());
  PlaceGauge();
}

void RunStatusBar::ShowUnsaved(bool unsaved) {
  if (unsaved == isUnsaved_) return;
  isUnsaved_ = unsaved;
  SetStatusText(unsaved ? "Unsaved" : "", kUnsaved);
}

void RunStatusBar::ShowProblems(const std::string& text) {
  SetStatusText(ToWx(text), kProblems);
}

void RunStatusBar::ShowChanged(std::size_t projects) {
  SetStatusText(projects == 1 ? wxString("1 changed project")
                              : wxString::Format("%zu changed projects", projects),
                kCount);
}

void RunStatusBar::ShowMissing(const std::string& text) {
  missing_ = ToWx(text);
  ShowGauge(gauge_->IsShown());
}

void RunStatusBar::ShowGauge(bool shown) {
  gauge_->Show(shown);
  SetStatusText(shown ? wxString() : missing_, kGauge);
  FitFields();
}

void RunStatusBar::Hear(const RunEvent& event) {
  if (const auto* started = std::get_if<RunStarted>(&event)) Begin(*started);
  if (const auto* project = std::get_if<ProjectStarted>(&event)) Next(*project);
  if (const auto* step = std::get_if<StepStarted>(&event)) Take(*step);
  if (std::holds_alternative<ProjectSkipped>(event)) gauge_->SetValue(gauge_->GetValue() + 1);
  if (std::holds_alternative<ProjectUpToDate>(event) && !isSideBySide_) {
    project_.Pause();
    gauge_->SetValue(gauge_->GetValue() + 1);
  }
  // Questions take the user's time, not the project's.
  if (std::holds_alternative<QuestionAsked>(event)) project_.Pause();
  if (std::holds_alternative<QuestionAnswered>(event)) project_.Resume();
  if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) Done(*compiled);
  if (const auto* paced = std::get_if<RunPaced>(&event)) Pace(*paced);
  if (const auto* done = std::get_if<RunDone>(&event)) {
    SetStatusText("The build is done", kStatus);
    End(done->end);
  }
  if (const auto* ended = std::get_if<RunEnded>(&event)) End(*ended);
}

void RunStatusBar::Begin(const RunStarted& run) {
  constexpr int kTick = 500;
  checked_ = run.paths.size();
  isSideBySide_ = false;
  gauge_->SetRange(std::max(1, static_cast<int>(checked_)));
  gauge_->SetValue(0);
  total_ = {};
  number_.clear();
  project_.Start();
  ShowGauge(checked_ > 0);
  PlaceGauge();
  timer_.Start(kTick);
}

void RunStatusBar::Next(const ProjectStarted& project) {
  if (isSideBySide_) return;
  gauge_->SetValue(static_cast<int>(project.number) - 1);
  number_ = wxString::Format("%zu of %zu", project.number, project.of);
  step_.clear();
  left_ = project.left;
  project_.Start();
  ShowTime();
}

void RunStatusBar::Take(const StepStarted& step) {
  if (isSideBySide_) return;
  step_ = ", " + ToWx(std::string(NameOf(step.step)));
  ShowTime();
}

// Questions about a project's result take the user's time, not the compiler's.
void RunStatusBar::Done(const ProjectCompiled& project) {
  total_ += project.duration;
  if (isSideBySide_) return;
  step_.clear();
  ShowTime();
  project_.Pause();
  gauge_->SetValue(gauge_->GetValue() + 1);
}

// Several are built side by side: their steps and times would take turns in one field.
void RunStatusBar::Pace(const RunPaced& paced) {
  isSideBySide_ = true;
  gauge_->SetValue(static_cast<int>(paced.done));
  SetStatusText(ToWx(PaceText(paced, {})), kCount);
}

// The result stays to be read until the next run.
void RunStatusBar::End(const RunEnded& run) {
  timer_.Stop();
  ShowGauge(false);
  const bool hasBuilt = run.result == RunResult::Finished || run.result == RunResult::Stopped ||
                        run.result == RunResult::Aborted;
  if (!hasBuilt) return;
  SetStatusText(ToWx(CountsText(run, checked_)), kCount);
  SetStatusText(ElapsedText(isSideBySide_ ? run.duration : total_), kTime);
}

void RunStatusBar::ShowTime() {
  if (!isSideBySide_ && !number_.empty()) {
    const auto time = std::chrono::milliseconds(project_.Time());
    const wxString estimate = ToWx(LeftText(left_, time));
    SetStatusText(number_ + step_ + (estimate.empty() ? estimate : ", " + estimate), kCount);
  }
  SetStatusText(ElapsedText(std::chrono::milliseconds(project_.Time())), kTime);
}

void RunStatusBar::PlaceGauge() {
  const int border = FromDIP(2);
  wxRect field;
  const bool hasRoom = GetFieldRect(kGauge, field) && field.width > 2 * border;
  if (hasRoom) gauge_->SetSize(field.Deflate(border));
}

}  // namespace gorbex::ui
