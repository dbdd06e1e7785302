#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include "tests/ui/window_fixture.h"
#include "ui/file_or_folder_window.h"
#include "ui/label_window.h"
#include "ui/login_window.h"
#include "ui/message_window.h"
#include "ui/options_window.h"
#include "ui/window_dialogs.h"

namespace gorbex::test {
namespace {

class FormsTest : public WindowFixture {
 protected:
  FormsTest() { Open(kProduct); }

  /// Lets the user work in the real options dialog.
  void InOptions(std::function<void()> act) {
    dialogs.useOptions = [this, act = std::move(act)](frmOptions& form) {
      ui::OptionsWindow window(frame, form);
      User::Then([&] {
        User::Waits();
        act();
        if (window.IsModal()) window.EndModal(wxID_CANCEL);
      });
      window.ShowModal();
    };
    user.Presses(',', wxMOD_CONTROL);
  }
};

TEST_F(FormsTest, OptionsAreKeptByApplyAndNotByCancel) {
  clsOptions& options = program->options;
  InOptions([&] {
    EXPECT_FALSE(The<wxButton>("cmdApply").IsEnabled());
    user.Clicks(The<wxCheckBox>("chkDebug"));
    EXPECT_TRUE(The<wxButton>("cmdApply").IsEnabled());
    user.Clicks(The<wxButton>("cmdApply"));
    EXPECT_FALSE(The<wxButton>("cmdApply").IsEnabled());
    user.Clicks(The<wxCheckBox>("chkChangeRefs"));
    user.Clicks(The<wxButton>("cmdCancel"));
  });
  EXPECT_EQ(options.DebugBuild, "True");
  EXPECT_FALSE(options.ChangeRefs);

  InOptions([&] {
    user.Presses(WXK_TAB, wxMOD_CONTROL);
    EXPECT_FALSE(The<wxTextCtrl>("txtVBPName").IsEnabled());
    user.Clicks(The<wxCheckBox>("chkAutoLaunchVBP"));
    dialogs.choices.emplace_back("C:\\Storefront\\Till\\StoreTill.vbp");
    user.Clicks(The<wxButton>("cmdBrowseVBP"));
    user.Presses(WXK_TAB, wxMOD_CONTROL);
    auto& interval = The<wxTextCtrl>("txtInterval");
    interval.SetFocus();
    interval.SelectAll();
    user.Types("90");
    user.Presses(WXK_TAB, wxMOD_CONTROL);
    EXPECT_TRUE(User::Sees([] { return The<wxNotebook>("tbsOptions").GetSelection() == 0; }))
        << "round to the first page";
    user.Clicks(The<wxButton>("cmdOK"));
  });
  EXPECT_TRUE(options.AutoLaunchVBP);
  EXPECT_EQ(options.AutoLaunchName, "C:\\Storefront\\Till\\StoreTill.vbp");
  EXPECT_EQ(options.Interval, 60);
  EXPECT_EQ(program->window.tmrOutlook.interval.Get(), 60000);
}

TEST_F(FormsTest, TheLogOfADayIsShownBesideTheMainWindow) {
  user.Presses('L', wxMOD_CONTROL);
  auto& days = The<wxChoice>("cboLogDate");
  ASSERT_EQ(days.GetCount(), 1U);
  auto& log = The<wxTextCtrl>("txtLog");
  bool isDropped = false;
  days.Bind(wxEVT_COMBOBOX_DROPDOWN, [&](wxCommandEvent&) { isDropped = true; });
  for (const std::string line : {"Application Started", "Second", "Third"}) {
    // The day is the only entry of the list, also when it was chosen before.
    isDropped = false;
    // A click that comes before the list has closed again goes nowhere.
    for (int tries = 0; tries < 5 && !isDropped; ++tries) {
      user.Clicks(days, wxPoint(days.GetClientSize().x - 10, days.GetClientSize().y / 2));
    }
    EXPECT_TRUE(isDropped);
    user.Presses(WXK_DOWN);
    user.Presses(WXK_RETURN);
    EXPECT_TRUE(User::Sees([&] { return log.GetValue().Find(line) != wxNOT_FOUND; })) << line;
    program->log.WriteLog(line == "Second" ? "Third" : "Second");
  }
  user.Presses(WXK_ESCAPE);
  EXPECT_EQ(Shown("cboLogDate"), nullptr);
  EXPECT_NE(frame, nullptr);
}

TEST_F(FormsTest, ALogIsSearchedAndCopied) {
  for (const char* line : {"first Needle", "hay", "needle and needle"}) program->log.WriteLog(line);
  user.Presses('L', wxMOD_CONTROL);
  auto& log = The<wxTextCtrl>("txtLog");
  EXPECT_NE(log.GetValue().Find("hay"), wxNOT_FOUND) << "opens with today's";
  log.SetInsertionPoint(0);
  user.Presses('F', wxMOD_CONTROL);
  user.Types("needle");
  const auto found = [] {
    wxWindow* bar = Shown("txtFind")->GetParent();
    return wxWindow::FindWindowByName("lblFound", bar)->GetLabel();
  };
  EXPECT_EQ(found(), "1 of 3") << "while it is typed";
  EXPECT_EQ(log.GetStringSelection(), "Needle");
  for (const auto& [key, modifiers, place, selected] :
       {std::tuple(WXK_RETURN, wxMOD_NONE, "2 of 3", "needle"),
        {WXK_F3, wxMOD_NONE, "3 of 3", "needle"},
        {WXK_F3, wxMOD_NONE, "1 of 3", "Needle"},
        {WXK_F3, wxMOD_SHIFT, "3 of 3", "needle"}}) {
    user.Presses(key, modifiers);
    EXPECT_EQ(found(), place);
    EXPECT_EQ(log.GetStringSelection(), selected);
  }
  user.Presses(WXK_ESCAPE);
  user.Presses('O', wxMOD_ALT);
  // The toolkit shows a pressed button for a moment first.
  for (int i = 0; i < 5; ++i) User::Waits();
  EXPECT_EQ(Clipboard(), "needle") << "by its access key";
}

TEST_F(FormsTest, MessagesAreAnsweredByTheirButtons) {
  class NoHost : public Host {
    PlatformServices Services(EventPump&) override { throw RuntimeError(ErrorNumber::InvalidCall); }
    [[nodiscard]] std::string TypedPath(const std::string& typed) const override { return typed; }
    [[nodiscard]] std::optional<std::string> ProgramPath(const std::string&) const override {
      return std::nullopt;
    }
  };
  const NoHost host;
  ui::WindowDialogs windows(host);
  windows.SetParent(frame);
  struct Case {
    Buttons buttons;
    int key;
    int modifiers;
    Answer answer;
    MessageIcon icon = MessageIcon::Question;
  };
  // As it is, whatever its length: it may be copied.
  const std::string path = "C:\\A folder\\OfMany\\AndAnother\\AndAnother\\AndAnother\\Core.vbp";
  std::string text = path;
  while (text.size() < 3000) text += " is not " + path;
  const Case cases[] = {
      {Buttons::Ok, WXK_RETURN, wxMOD_NONE, Answer::Ok, MessageIcon::None},
      {Buttons::Ok, WXK_ESCAPE, wxMOD_NONE, Answer::Ok, MessageIcon::CriticalStop},
      {Buttons::OkCancel, WXK_ESCAPE, wxMOD_NONE, Answer::Cancel},
      {Buttons::YesNo, 'Y', wxMOD_ALT, Answer::Yes},
      {Buttons::YesNo, 'N', wxMOD_ALT, Answer::No},
      {Buttons::YesNo, WXK_ESCAPE, wxMOD_NONE, Answer::Cancel},
      {Buttons::AbortRetryIgnore, 'R', wxMOD_ALT, Answer::Retry},
      {Buttons::AbortRetryIgnore, 'I', wxMOD_ALT, Answer::Ignore},
      {Buttons::AbortRetryIgnore, WXK_ESCAPE, wxMOD_NONE, Answer::Abort},
  };
  for (const Case& row : cases) {
    User::Then([&] {
      EXPECT_EQ(The<wxTextCtrl>("message").GetValue().utf8_string(), text);
      EXPECT_EQ(Shown("icon") != nullptr, row.icon != MessageIcon::None);
      EXPECT_LT(Shown("message")->GetSize().y, 400);
      user.Presses(row.key, row.modifiers);
    });
    EXPECT_EQ(windows.Show({text, row.buttons, row.icon}), row.answer)
        << static_cast<int>(row.buttons) << " " << row.key;
  }
}

TEST_F(FormsTest, AFileOrFolderIsTypedOrChosen) {
  int asked = 0;
  const auto choose = [&]() -> wxString { return ++asked == 1 ? "" : "C:\\Chosen"; };
  ui::FileOrFolderWindow window(frame, {"New", "Groups (*.vbg)|*.vbg", "*.vbg", "For a test."},
                                choose, [] { return wxString(); });
  User::Then([&] {
    User::Waits();
    EXPECT_FALSE(window.FindWindow(wxID_OK)->IsEnabled());
    user.Types("x");
    EXPECT_TRUE(window.FindWindow(wxID_OK)->IsEnabled());
    user.Clicks(The<wxButton>("cmdFile"));
    EXPECT_EQ(window.Path(), "x") << "cancelled";
    user.Clicks(The<wxButton>("cmdFile"));
    user.Presses(WXK_RETURN);
  });
  EXPECT_EQ(window.ShowModal(), wxID_OK);
  EXPECT_EQ(window.Path(), "C:\\Chosen");
}

TEST_F(FormsTest, TheSystemsWishToEndWaitsForAnOpenForm) {
  bool stoodOpen = false;
  InOptions([&] {
    frame->Close();
    User::Waits();
    stoodOpen = frame != nullptr;
  });
  EXPECT_TRUE(User::Sees([&] { return frame == nullptr; }));
  EXPECT_TRUE(stoodOpen);
}

TEST_F(FormsTest, TheSystemEndsARunAndTheWindowThroughAnOpenMessage) {
  std::optional<Answer> answer = Answer::Ok;
  bool isOver = false;
  const auto listening = program->run.events.Connect([&](const RunEvent& event) {
    if (!std::holds_alternative<ProjectStarted>(event) || std::exchange(isOver, true)) return;
    ui::MessageWindow box(frame, "Question", {"Go on?", Buttons::YesNo});
    User::Then([&] { frame->End(); });
    answer = box.Ask();
  });
  user.Presses(WXK_F7);
  EXPECT_TRUE(User::Sees([&] { return frame == nullptr; }));
  EXPECT_TRUE(isOver && !answer);
  EXPECT_EQ(Icons().find("buildok"), std::string::npos) << "no program is started any more";
}

TEST_F(FormsTest, LoginStaysOpenUntilTheDatabaseOpensOrTheUserGivesUp) {
  program->window.IniPath = "C:\\none.ini";
  program->window.UserName = "me";
  dialogs.useLogin = [this](frmLogin& form) {
    ui::LoginWindow window(frame, form);
    User::Then([&] {
      User::Waits();
      EXPECT_TRUE(The<wxTextCtrl>("txtPassword").HasFocus());
      user.Types("secret");
      EXPECT_EQ(form.txtPassword.text.Get(), "secret");
      user.Clicks(The<wxButton>("cmdOK"));
      EXPECT_TRUE(window.IsModal());
      EXPECT_EQ(The<wxTextCtrl>("txtPassword").GetStringSelection(), "secret");
      user.Presses(WXK_ESCAPE);
    });
    window.ShowModal();
    EXPECT_TRUE(form.Cancelled);
  };
  Asked();
  program->session.LoginToSourceSafe();
  const Journal asked = Asked();
  ASSERT_EQ(asked.size(), 3U);
  EXPECT_TRUE(asked[1].starts_with("show Could not log in to source-safe\r\n"));
  EXPECT_EQ(asked[2], "show Source-Control will be disabled for this session");
}

TEST_F(FormsTest, LoginClosedByItsFrameIsNotCancelled) {
  for (const bool mayStayEmpty : {false, true}) {
    frmLogin form;
    form.mayStayEmpty = mayStayEmpty;
    ui::LoginWindow window(frame, form);
    bool isHinted = false;
    for (const wxWindow* child : window.GetChildren()) {
      isHinted = isHinted || child->GetLabel().Contains("your git");
    }
    EXPECT_EQ(isHinted, mayStayEmpty);
    User::Then([&] {
      User::Waits();
      form.cmdCancel.enabled.Set(false);
      window.Close();
      EXPECT_TRUE(window.IsModal()) << "the client is at work";
      form.cmdCancel.enabled.Set(true);
      window.Close();
    });
    window.ShowModal();
    EXPECT_TRUE(form.hidden.Get());
    EXPECT_FALSE(form.Cancelled);
  }
}

TEST_F(FormsTest, LabelWantsBothTexts) {
  dialogs.useLabel = [this](frmLabel& form) {
    ui::LabelWindow window(frame, form);
    User::Then([&] {
      User::Waits();
      user.Types("release");
      EXPECT_FALSE(The<wxButton>("cmdOK").IsEnabled());
      user.Clicks(The<wxTextCtrl>("txtComment"));
      user.Types("all");
      EXPECT_TRUE(The<wxButton>("cmdOK").IsEnabled());
      user.Clicks(The<wxButton>("cmdCancel"));
    });
    window.ShowModal();
    EXPECT_EQ(form.txtLabel.text.Get() + form.txtComment.text.Get(), "releaseall");
  };
  program->labelling.mnuToolsLabel_Click();
  EXPECT_EQ(Asked().back(), "label");
}

}  // namespace
}  // namespace gorbex::test
