#include "ui/elapsed_time.h"

namespace gorbex::ui {

wxString ElapsedText(std::chrono::milliseconds elapsed) {
  using namespace std::chrono;
  if (elapsed < 10s) return wxString::Format("%.1f s", duration<double>(elapsed).count());
  const auto whole = duration_cast<seconds>(elapsed).count();
  if (whole < 60) return wxString::Format("%d s", static_cast<int>(whole));
  return wxString::Format("%d:%02d", static_cast<int>(whole / 60), static_cast<int>(whole % 60));
}

}  // namespace gorbex::ui
