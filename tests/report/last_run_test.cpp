#include <algorithm>

#include "platform/code_page.h"
#include "report/run_page.h"
#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

/// Core, which Money and Till use, on two places; Money takes longest.
class LastRunTest : public BuildFixture {
 protected:
  LastRunTest() {
    group.Library("Core").Line("CompatibleMode=\"2\"");
    group.Library("Money").Uses("Core").Line("CompatibleMode=\"2\"");
    group.Library("Till").Uses("Core").Line("CompatibleMode=\"2\"");
    program.options.Jobs = 2;
    program.lastRun.Listen(program.run.events);
    listening_ = program.run.events.Connect([this](const RunEvent& event) {
      const auto* started = std::get_if<ProjectStarted>(&event);
      if (started == nullptr) return;
      platform.processes.polls = started->path == Group::Path("Money")  ? 100
                                 : started->path == Group::Path("Core") ? 20
                                                                        : 10;
      if (atStart) atStart(started->path);
    });
  }

  [[nodiscard]] std::vector<std::string> Rows() const {
    std::vector<std::string> rows;
    for (const auto& row : program.lastRunForm.lvwProjects.Rows()) {
      rows.push_back(row->Text() + " " + row->SubItem(last_run_column::kResult) + " " +
                     row->SubItem(last_run_column::kCritical));
    }
    return rows;
  }

  [[nodiscard]] std::string Saved() {
    dialogs.choices = {"C:\\run.html"};
    program.lastRunForm.cmdSave.Execute();
    return platform.files.Text("C:\\run.html");
  }

  std::function<void(const std::string& path)> atStart;

 private:
  Subscription listening_;
};

TEST_F(LastRunTest, ListsTheSlowestFirstAndFollowsARun) {
  Load();
  frmLastRun& form = program.lastRunForm;
  program.window.menu.mnuWindowLastRun.Execute();
  EXPECT_TRUE(form.visible.Get());
  EXPECT_FALSE(form.cmdSave.IsPossible()) << "there was no run";
  std::vector<std::string> during;
  atStart = [&](const std::string& path) {
    if (path != Group::Path("Till")) return;
    program.lastRunList.Tick();
    during = Rows();
    EXPECT_FALSE(form.cmdSave.IsPossible());
  };
  failing = "Till";
  Build();
  std::sort(during.begin(), during.end());
  EXPECT_EQ(during, (std::vector<std::string>{"Core.vbp built yes", "Money.vbp building ",
                                              "Till.vbp building yes"}));
  EXPECT_EQ(Rows(), (std::vector<std::string>{"Money.vbp built yes", "Core.vbp built yes",
                                              "Till.vbp failed "}));
  EXPECT_EQ(form.summary.Get().substr(0, 21), "2 built, 1 failed in ");

  form.headingClicked.Emit(last_run_column::kProject);
  EXPECT_EQ(Rows().front(), "Core.vbp built yes");
  form.headingClicked.Emit(last_run_column::kProject);
  EXPECT_EQ(Rows().front(), "Till.vbp failed ");

  const auto& bars = program.lastRunList.Timeline().bars;
  program.lastRunList.SelectBar(0);
  EXPECT_EQ(form.lvwProjects.SelectedRow().Text(), "Core.vbp");
  for (std::size_t i = 0; i < 5; ++i) program.lastRunList.SelectNextBar(true);
  EXPECT_EQ(program.lastRunList.SelectedBar(), bars.size() - 1);
}

TEST_F(LastRunTest, IsReplacedByAShorterRunAndGoneWithItsBuildProject) {
  Load();
  program.window.menu.mnuWindowLastRun.Execute();
  Build();
  for (const auto* name : {"Core", "Till"}) Row(name).SetChecked(false);
  Build();
  EXPECT_EQ(Rows(), std::vector<std::string>{"Money.vbp built yes"});
  const std::string& summary = program.lastRunForm.summary.Get();
  EXPECT_TRUE(summary.ends_with(", 1 of 2 places used")) << summary;
  failing = "Money";
  Build();
  program.window.menu.mnuFileNew.Execute();
  EXPECT_EQ(Rows(), std::vector<std::string>());
  EXPECT_EQ(summary, "");
  EXPECT_FALSE(program.lastRunForm.cmdSave.IsPossible());
  EXPECT_TRUE(program.failed.All().empty());
}

TEST_F(LastRunTest, SavesAPageInWhichEverythingIsEscaped) {
  Load();
  platform.processes.otherwise = [this](const std::string& commandLine) {
    const auto log = commandLine.find("/out \"") + 6;
    platform.files.AddFile(commandLine.substr(log, commandLine.find('"', log) - log),
                           "Compile Error: </pre><script>x()</script> & \x01\x81\xe9\xff");
    return 1U;
  };
  program.options.SkipUsersOfFailed = true;
  Build();
  program.window.menu.mnuWindowLastRun.Execute();
  Steps();
  const std::string page = Saved();
  EXPECT_EQ(Only(Steps(), {"save"}),
            Journal{"save Save Report|Web Pages (*.html)|*.html|Group.html"});
  EXPECT_TRUE(IsUtf8(page));
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_EQ(page.find('\x01'), std::string::npos);
  for (const std::string part :
       {"&lt;script&gt;x()&lt;/script&gt; &amp; ", "\xc3\xa9\xc3\xbf", "it uses C:\\Group\\Core",
        "1 failed, 2 not built", "started in the window", "GorbexBuilder"}) {
    EXPECT_NE(page.find(part), std::string::npos) << part;
  }
  platform.files.Fail(FileOperation::Write, "C:\\run.html", ErrorNumber::DiskFull);
  Steps();
  EXPECT_EQ(Saved(), page) << "the old page is kept";
  EXPECT_NE(Only(Steps(), {"show"}).front().find("Error 61"), std::string::npos);
}

}  // namespace
}  // namespace gorbex::test
