#include "analysis/build_queue.h"

#include <algorithm>
#include <random>

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

struct QueueRow {
  std::string project;
  std::string dependency;
  bool linked = false;
  bool fresh = false;  ///< made by Arrange: no mark, no compatibility, no date
  std::string text{};
};
using Rows = std::vector<QueueRow>;

auto RowOf(Rows& rows, const std::string& project) {
  return std::find_if(rows.begin(), rows.end(),
                      [&](const QueueRow& row) { return row.project == project; });
}

// Arrange done by hand, row by row. Gives the number of rows that were lost; negative when the
// first of them ended the command.
int ArrangeSlowly(Rows& rows, bool ignoreErrors) {
  int lost = 0;
  for (auto rounds = rows.size(); rounds > 0; --rounds) {
    for (auto& row : rows) {
      if (!row.dependency.empty() && RowOf(rows, row.dependency) != rows.end()) row.linked = true;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!rows[i].linked) continue;
      const QueueRow row = rows[i];
      rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(i));
      auto place = rows.end();
      if (rows.size() >= 2) {
        place = RowOf(rows, row.dependency);
        if (place == rows.end()) {
          if (!ignoreErrors) return -1;
          ++lost;
          continue;
        }
        ++place;
      }
      place = rows.insert(place, {row.project, row.dependency, false, true, "1"});
      i = static_cast<std::size_t>(place - rows.begin());
    }
  }
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].text = std::to_string(i + 1);
  return lost;
}

std::string Text(const Rows& rows) {
  std::string text{};
  for (const auto& row : rows) {
    text += row.text + " " + row.project + "|" + row.dependency + (row.fresh ? "" : "|c|d *") +
            (row.linked ? " linked" : "") + "\n";
  }
  return text;
}

class BuildQueueTest : public ProgramFixture {
 protected:
  void Fill(const Rows& rows) {
    queue.Clear();
    for (const auto& row : rows) {
      ListRow& added = queue.Add(row.project, row.text, Image::BuildOk);
      added.SetSubItem(1, row.project);
      added.SetSubItem(2, row.dependency);
      added.SetSubItem(3, "c");
      added.SetSubItem(4, "d");
      added.SetChecked(true);
      added.SetTag(row.linked ? "9" : "");
    }
  }
  /// The queue with its cells; where the row's key is not its project, the key too.
  std::string Shown() {
    Rows rows;
    for (const auto& row : queue.Rows()) {
      EXPECT_EQ(row->Key(), row->SubItem(1));
      EXPECT_EQ(queue.Find(row->Key()), row.get());
      const bool fresh = row->SubItem(3).empty() && row->SubItem(4).empty() && !row->Checked() &&
                         row->Icon() == Image::VbProject;
      rows.push_back({row->SubItem(1), row->SubItem(2), !row->Tag().empty(), fresh, row->Text()});
    }
    return Text(rows);
  }
  std::string Order() {
    std::string order;
    for (const auto& row : queue.Rows()) order += row->Text() + row->Key() + " ";
    return order;
  }
  /// Runs Arrange and the slow one twice, with the same answer to every report.
  void CompareArrange(Rows rows, bool ignoreErrors) {
    Fill(rows);
    const std::string before = Text(rows);
    for (int command = 1; command <= 2; ++command) {
      dialogs.answers.assign(rows.size(), ignoreErrors ? Answer::Ignore : Answer::Abort);
      Effects();
      ListRow* selected = rows.empty() ? nullptr : &queue.At(1);
      const std::string key = rows.empty() ? "" : selected->Key();
      queue.Select(selected);
      program.window.menu.mnuQueueArrange.Execute();
      ASSERT_TRUE(queue.Selected() == nullptr || queue.Selected()->Key() == key) << before;
      const int lost = ArrangeSlowly(rows, ignoreErrors);
      ASSERT_EQ(Shown(), Text(rows)) << "command " << command << " on\n" << before;
      const auto reports = Effects();
      ASSERT_EQ(static_cast<int>(reports.size()), std::abs(lost)) << before;
      for (const auto& report : reports) {
        ASSERT_NE(report.find("Error 35601: "), report.npos);
        ASSERT_NE(report.find("GorbexBuilder: frmBuilder.mnuQueueArrange_Click"), report.npos);
      }
    }
  }

  ListView& queue = program.window.lvwQueue;
};

TEST_F(BuildQueueTest, ArrangePutsRowsBelowWhatTheyDependOn) {
  const std::vector<std::pair<Rows, std::string>> cases = {
      {{}, ""},
      {{{"A", "A"}}, "1A "},
      {{{"A", "X"}, {"B", ""}}, "1A 2B "},
      {{{"A", "B"}, {"B", ""}}, "1B 2A "},
      {{{"A", "B"}, {"B", ""}, {"C", ""}}, "1B 2A 3C "},
      {{{"A", "C"}, {"B", ""}, {"C", ""}}, "1B 2C 3A "},
      {{{"A", "B"}, {"B", "C"}, {"C", "D"}, {"D", ""}}, "1D 2C 3B 4A "}};
  for (const auto& [rows, order] : cases) {
    Fill(rows);
    program.window.menu.mnuQueueArrange.Execute();
    EXPECT_EQ(Order(), order);
  }
}

TEST_F(BuildQueueTest, ArrangeAgreesWithTheRoundsDoneByHand) {
  std::mt19937 random(7);
  for (int round = 0; round < 4000; ++round) {
    const std::size_t count = round < 3990 ? random() % 9 : 60 + random() % 41;
    const auto kind = random() % 4;  // a chain, a star, or anything with and without old tags
    Rows rows;
    for (std::size_t i = 0; i < count; ++i) {
      const auto dependency = kind == 0   ? (i + 1) % (count + 1)
                              : kind == 1 ? 0
                                          : random() % (count + 3);
      const bool none = random() % 5 == 0;
      rows.push_back({"P" + std::to_string(i), none ? "" : "P" + std::to_string(dependency)});
      rows.back().linked = kind == 3 && random() % 3 == 0;
    }
    std::shuffle(rows.begin(), rows.end(), random);
    CompareArrange(rows, round % 2 == 0);
    if (HasFatalFailure()) return;
  }
}

TEST_F(BuildQueueTest, ArrangeOfALongReversedChainIsQuick) {
  Rows rows;
  for (int i = 0; i < 2000; ++i) {
    rows.push_back({std::to_string(i), i == 1999 ? "" : std::to_string(i + 1)});
  }
  Fill(rows);
  const auto start = std::chrono::steady_clock::now();
  program.window.menu.mnuQueueArrange.Execute();
  const auto took = std::chrono::steady_clock::now() - start;
  RecordProperty(
      "milliseconds",
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(took).count()));
  EXPECT_LT(took, std::chrono::seconds(10));
  EXPECT_EQ(queue.At(1).Key() + queue.At(2000).Key(), "4647") << "the last round's order";
}

TEST_F(BuildQueueTest, DropAddsAProjectOnceWithItsFirstDependency) {
  auto& core = group.Library("Core").Built().Line("CompatibleMode=\"2\"");
  group.Library("MyCore");
  auto& app = group.Executable("App");
  app.Line("Reference=*\\Ghalf").Line("Object={O}#1#0; mycore.DLL").Uses("Other").Uses("Core");
  program.buildProject.LoadProject(group.BuildProject());
  platform.files.SetLastWrite(core.Binary(), {0});
  queue.Clear();
  for (const auto& [path, source] : {std::pair(app.Path(), "tvwProjects"),
                                     {core.Path(), "lvwData"},
                                     {core.Path(), "tvwProjects"},
                                     {app.Path(), "tvwProjects"}}) {
    program.window.tvwProjects.Select(&program.window.tvwProjects.Item("x)" + path));
    program.queue.lvwQueue_DragDrop(source);
  }
  std::string rows;
  for (const auto& row : queue.Rows()) {
    rows += row->Text() + (row->Checked() ? "*" : "") + row->Key() + "|" + row->SubItem(2) + "|" +
            row->SubItem(3) + "|" + row->SubItem(4) + "\n";
  }
  EXPECT_EQ(rows, "1*" + app.Path() + "|" + core.Path() + "|NOT Compatible!|Not Found\n2*" +
                      core.Path() + "||Compatible|01/01/1601 00:00\n");
  EXPECT_TRUE(program.window.ProjectChanged);
}

TEST_F(BuildQueueTest, RowsMoveByOnePlaceAndLoseTheirDateAlone) {
  auto& menu = program.window.menu;
  Fill({{"A", "x"}, {"B", "y"}, {"C", ""}});
  queue.Select(queue.Find("A"));
  menu.mnuQueueMoveUp.Execute();
  EXPECT_EQ(queue.At(1).SubItem(4), "d");
  menu.mnuQueueMoveDown.Execute();
  EXPECT_EQ(Order(), "1B 2A 3C ");
  const ListRow& row = queue.At(2);
  EXPECT_EQ(queue.Selected(), &row);
  EXPECT_EQ(row.SubItem(2) + row.SubItem(3) + row.SubItem(4), "xc");
  EXPECT_TRUE(row.Checked());
  menu.mnuQueueMoveDown.Execute();
  menu.mnuQueueMoveDown.Execute();
  EXPECT_EQ(Order(), "1B 2C 3A ");
  menu.mnuQueueMoveUp.Execute();
  EXPECT_EQ(Order(), "1B 2A 3C ");

  menu.mnuQueueRemove.Execute();
  EXPECT_EQ(queue.Count(), 3U);
  dialogs.answers = {Answer::Yes, Answer::Yes};
  menu.mnuQueueRemove.Execute();
  EXPECT_EQ(Order(), "1B 2C ");
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
