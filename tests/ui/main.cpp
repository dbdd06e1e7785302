#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

namespace {

void FailOnAssert(const wxString& file, int line, const wxString& function,
                  const wxString& condition, const wxString& message) {
  ADD_FAILURE_AT(file.utf8_str(), line)
      << function.utf8_string() << ": " << condition.utf8_string() << " " << message.utf8_string();
}

}  // namespace

int main(int count, char** values) {
  ::testing::InitGoogleTest(&count, values);
  wxApp::SetInstance(new wxApp);
  if (!wxEntryStart(count, values)) return 1;
  wxTheApp->SetExitOnFrameDelete(false);
  wxSetAssertHandler(FailOnAssert);
  wxLog::EnableLogging(false);
  const int result = RUN_ALL_TESTS();
  wxEntryCleanup();
  return result;
}
