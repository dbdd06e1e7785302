#include "analysis/build_queue.h"

#include <algorithm>
#include <random>

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

const std::string kKept = "|c|d|buildok *";
const std::string kNew = "|||vbproject";  ///< made by Arrange: no mark, compatibility or date

struct QueueRow {
  std::string project;
  std::string dependency;
  bool linked = false;
  std::string rest = kKept;
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
      place = rows.insert(place, {row.project, row.dependency, false, kNew, "1"});
      i = static_cast<std::size_t>(place - rows.begin());
    }
  }
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].text = std::to_string(i + 1);
  return lost;
}

std::string Text(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) {
    text += row.text + " " + row.project + "|" + row.dependency + row.rest +
            (row.linked ? " linked\n" : "\n");
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
  std::string Shown() {
    Rows rows;
    for (const auto& row : queue.Rows()) {
      EXPECT_EQ(queue.Find(row->SubItem(1)), row.get());
      auto rest = "|" + row->SubItem(3) + "|" + row->SubItem(4) + "|";
      rest.append(ImageKey(row->Icon())).append(row->Checked() ? " *" : "");
      rows.push_back({row->Key(), row->SubItem(2), !row->Tag().empty(), rest, row->Text()});
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
      if (!rows.empty()) queue.Select(&queue.At(1));
      Effects();
      program.window.menu.mnuQueueArrange.Execute();
      const ListRow* selected = queue.Selected();
      ASSERT_TRUE(selected == nullptr || queue.Find(selected->Key()) == selected) << before;
      const int lost = ArrangeSlowly(rows, ignoreErrors);
      ASSERT_EQ(Shown(), Text(rows)) << "command " << command << " on\n" << before;
      const auto reports = Effects();
      ASSERT_EQ(static_cast<int>(reports.size()), std::abs(lost)) << before;
      for (const auto& report : reports) {
        ASSERT_NE(report.find("Error 35601: "), report.npos);
        ASSERT_TRUE(report.ends_with("GorbexBuilder: frmBuilder.mnuQueueArrange_Click"));
      }
    }
  }

  ListView& queue = program.window.lvwQueue;
};

TEST_F(BuildQueueTest, ArrangeAgreesWithTheRoundsDoneByHand) {
  std::mt19937 random(7);
  for (int round = 0; round < 4000 && !HasFatalFailure(); ++round) {
    const std::size_t count = round < 3990 ? random() % 9 : 60 + random() % 41;
    const auto kind = random() % 4;  // a chain, a star, or anything with and without old tags
    Rows rows;
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t others[] = {(i + 1) % (count + 1), 0, random() % (count + 3)};
      const auto dependency = others[std::min<std::size_t>(kind, 2)];
      const bool none = random() % 5 == 0;
      rows.push_back({"P" + std::to_string(i), none ? "" : "P" + std::to_string(dependency)});
      rows.back().linked = kind == 3 && random() % 3 == 0;
    }
    std::shuffle(rows.begin(), rows.end(), random);
    CompareArrange(rows, round % 2 == 0);
  }
}

TEST_F(BuildQueueTest, ArrangeOfALongReversedChainIsQuick) {
  Rows rows;
  for (int i = 0; i < 2000; ++i) rows.push_back({std::to_string(i), std::to_string(i + 1)});
  rows.back().dependency.clear();
  Fill(rows);
  const auto start = std::chrono::steady_clock::now();
  program.window.menu.mnuQueueArrange.Execute();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_EQ(queue.At(1).Key() + queue.At(2000).Key(), "4647") << "the last round's order";
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
