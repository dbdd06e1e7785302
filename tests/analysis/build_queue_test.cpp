#include "analysis/build_queue.h"

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

struct QueueRow {
  std::string project;
  std::string dependency;
  bool linked = false;
};
using Rows = std::vector<QueueRow>;

class BuildQueueTest : public ProgramFixture {
 protected:
  void Fill(const Rows& rows) {
    queue.Clear();
    for (const auto& row : rows) {
      ListRow& added = queue.Add(row.project, "", Image::BuildOk);
      added.SetSubItem(1, row.project);
      added.SetSubItem(2, row.dependency);
      added.SetSubItem(3, "c");
      added.SetSubItem(4, "d");
      added.SetChecked(true);
      added.SetTag(row.linked ? "9" : "");
    }
  }
  std::string Shown() {
    std::string rows;
    for (const auto& row : queue.Rows()) {
      EXPECT_EQ(queue.Find(row->SubItem(1)), row.get());
      rows += row->Text() + " " + row->Key() + "|" + row->SubItem(2) + "|" + row->SubItem(3) + "|" +
              row->SubItem(4) + "|";
      rows.append(ImageKey(row->Icon())).append(row->Checked() ? " *\n" : "\n");
    }
    return rows;
  }
  /// The rows by number and project; "*" at those that are linked, "-" at those that Arrange made,
  /// which have no mark, compatibility or date.
  std::string Order() {
    std::string order;
    for (const auto& row : queue.Rows()) {
      const bool isNew = !row->Checked() && row->Icon() == Image::VbProject &&
                         row->SubItem(3).empty() && row->SubItem(4).empty();
      order += row->Text() + row->Key() + (row->Tag().empty() ? "" : "*") + (isNew ? "- " : " ");
    }
    return order;
  }

  ListView& queue = program.window.lvwQueue;
};

// The order is compared with that of the plain rounds in the fuzz target of the arrangement.
TEST_F(BuildQueueTest, ArrangePutsRowsBelowTheirsAndReportsThoseItLoses) {
  struct Case {
    Rows rows;
    std::string first, second;  ///< the order after the command, and after another one
    Answer answer = Answer::Abort;
    std::size_t reports = 0;
  };
  const Rows lost = {{"A", "A"}, {"B", "A"}, {"C", "B"}};
  const Case cases[] = {
      {{}, "", ""},
      {{{"A", "B"}, {"B", "C"}, {"C", "D"}, {"D", ""}}, "1D 2C- 3B- 4A- ", "1D 2C- 3B- 4A- "},
      {{{"A", "B"}, {"B", "C"}, {"C", "A"}, {"D", ""}}, "1B*- 2A*- 3C- 4D ", "1A*- 2C*- 3B- 4D "},
      {lost, "1B- 2C- ", "1B- 2C- ", Answer::Ignore, 1},
      {lost, "B* C* ", "1B- 2C- ", Answer::Abort, 1},
      {{{"A", "x", true}, {"B", "", true}, {"C", ""}}, "1C 2B- ", "1C 2B- ", Answer::Ignore, 1}};
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    Fill(c.rows);
    if (!c.rows.empty()) queue.Select(&queue.At(1));
    dialogs.answers = {c.answer};
    program.window.menu.mnuQueueArrange.Execute();
    EXPECT_EQ(Order(), c.first);
    const auto moved = std::count(c.first.begin(), c.first.end(), '-');
    const std::string told = std::to_string(moved) + " rows moved and unchecked";
    if (c.reports == 0 && moved > 1) {
      EXPECT_EQ(program.window.stbStatus.Get(), told);
    }
    const ListRow* selected = queue.Selected();
    EXPECT_TRUE(selected == nullptr || queue.Find(selected->Key()) == selected);
    const auto reports = Effects();
    EXPECT_EQ(reports.size(), c.reports);
    for (const auto& report : reports) {
      EXPECT_NE(report.find("Error 35601: "), report.npos);
      EXPECT_TRUE(report.ends_with("GorbexBuilder: frmBuilder.mnuQueueArrange_Click"));
    }
    program.window.menu.mnuQueueArrange.Execute();
    EXPECT_EQ(Order(), c.second);
    EXPECT_EQ(Effects(), Journal{});
  }
}

TEST_F(BuildQueueTest, DropAddsAProjectOnceWithItsFirstDependency) {
  auto& core = group.Library("Core").Built().Line("CompatibleMode=\"2\"");
  group.Library("MyCore");
  auto& app = group.Executable("App");
  app.Line("Reference=*\\Ghalf").Line("Object={O}#1#0; mycore.DLL").Uses("Other").Uses("Core");
  program.buildProject.LoadProject(group.BuildProject());
  queue.Clear();
  for (const auto& [path, source] : {std::pair(app.Path(), "tvwProjects"),
                                     {core.Path(), "lvwData"},
                                     {core.Path(), "tvwProjects"},
                                     {app.Path(), "tvwProjects"}}) {
    program.window.tvwProjects.Select(&program.window.tvwProjects.Item("x)" + path));
    program.queue.lvwQueue_DragDrop(source);
  }
  EXPECT_EQ(Shown(), "1 " + app.Path() + "|" + core.Path() +
                         "|NOT Compatible!|Not Found|vbproject *\n2 " + core.Path() +
                         "||Compatible|01/03/1601 00:00|vbproject *\n");
  EXPECT_TRUE(program.window.ProjectChanged);

  program.window.menu.mnuQueueEmpty.Execute();
  program.window.tvwProjects.Select(program.window.tvwProjects.Find("r)" + core.Path()));
  program.window.menu.mnuQueueAdd.Execute();
  EXPECT_EQ(program.window.lvwQueue.At(1).Key(), core.Path()) << "of the selected reference";
  program.window.menu.mnuQueueAddAll.Execute();
  EXPECT_EQ(program.window.lvwQueue.Count(), 3U);
  EXPECT_EQ(program.window.lvwQueue.At(2).Text(), "2");
}

TEST_F(BuildQueueTest, RowsMoveByOnePlaceAndLoseTheirDateAlone) {
  auto& menu = program.window.menu;
  Fill({{"A", "x"}, {"B", "y"}, {"C", ""}});
  queue.Select(queue.Find("A"));
  menu.mnuQueueMoveUp.Execute();
  EXPECT_EQ(queue.At(1).SubItem(4), "d");
  menu.mnuQueueMoveDown.Execute();
  EXPECT_EQ(Order(), "1B 2A 3C ");
  EXPECT_EQ(queue.Selected(), &queue.At(2));
  EXPECT_NE(Shown().find("2 A|x|c||vbproject *\n"), std::string::npos);
  menu.mnuQueueMoveDown.Execute();
  menu.mnuQueueMoveDown.Execute();
  EXPECT_EQ(Order(), "1B 2C 3A ");
  menu.mnuQueueMoveUp.Execute();
  EXPECT_EQ(Order(), "1B 2A 3C ");
}

TEST_F(BuildQueueTest, CommandsRemoveOneAskedForAndMarkOrEmptyAll) {
  auto& menu = program.window.menu;
  Fill({{"A", ""}, {"B", ""}, {"C", ""}});
  queue.Select(queue.Find("B"));
  menu.mnuQueueRemove.Execute();
  EXPECT_EQ(queue.Count(), 3U);
  dialogs.answers = {Answer::Yes, Answer::Yes};
  menu.mnuQueueRemove.Execute();
  EXPECT_EQ(Order(), "1A 2C ");
  menu.mnuQueueRemove.Execute();
  menu.mnuQueueMoveUp.Execute();
  const std::string ask = "show [YesNo Question] Remove item from queue???";
  const std::string unset = "Object variable or With block variable not set";
  EXPECT_EQ(Effects(),
            (Journal{ask, ask, ask, Reported(91, unset, ": frmBuilder.mnuQueueRemove_Click"),
                     Reported(91, unset, ": frmBuilder.mnuQueueMoveUp_Click")}));
  menu.mnuQueueUnMarkAll.Execute();
  EXPECT_FALSE(queue.At(1).Checked() || queue.At(2).Checked());
  menu.mnuQueueMarkAll.Execute();
  EXPECT_TRUE(queue.At(1).Checked() && queue.At(2).Checked());
  menu.mnuQueueEmpty.Execute();
  EXPECT_EQ(queue.Count(), 0U);
}

}  // namespace
}  // namespace gorbex::test
