#include "analysis/dependency_picture.h"

#include <cmath>

#include "analysis/picture_view.h"
#include "core/node_key.h"
#include "tests/support/build_fixture.h"

namespace gorbex::test {
namespace {

class DependencyPictureTest : public BuildFixture {
 protected:
  DependencyPictureTest() {
    for (const char* name : {"Core", "Money"}) group.Library(name).Line("CompatibleMode=\"2\"");
    for (const char* name : {"Till", "Stock"}) {
      group.Library(name).Uses("Money").Uses("Core").Line("CompatibleMode=\"2\"");
    }
    Load();
    picture.mnuWindowDependencies_Click();
  }

  [[nodiscard]] std::string Selected() {
    picture.CatchUp();
    const auto selected = picture.Selected();
    const ListRow* row = program.dependencies.lvwProjects.Selected();
    EXPECT_EQ(selected.has_value(), row != nullptr);
    if (!selected) return "";
    EXPECT_EQ(row->Text(), picture.Projects()[*selected].name);
    return row->Text();
  }

  /// The states as the list tells them.
  [[nodiscard]] std::string States() {
    picture.CatchUp();
    std::string states;
    for (const auto& row : program.dependencies.lvwProjects.Rows()) {
      states += row->Text() + " " + row->SubItem(dependency_column::kState) + ", ";
    }
    return states;
  }

  DependencyPicture& picture = program.picture;
};

TEST_F(DependencyPictureTest, StatesFollowMarksRunsAndTheLook) {
  const auto all = [](const std::string& core, const std::string& money,
                      const std::string& others) {
    return "Core " + core + ", Money " + money + ", Till " + others + ", Stock " + others + ", ";
  };
  Row("Core").SetChecked(false);
  EXPECT_EQ(States(), all("not checked", "checked", "checked"));
  program.dependencies.cmdOutdated.Execute();
  EXPECT_EQ(States(), all("out of date", "out of date", "out of date"));
  failing = "Money";
  program.options.SkipUsersOfFailed = true;
  std::string atWork;
  const Subscription listening = program.run.events.Connect([&](const RunEvent& event) {
    if (std::holds_alternative<StepStarted>(event)) atWork = States();
  });
  Build();
  EXPECT_EQ(atWork, all("not checked", "building", "checked"));
  EXPECT_EQ(States(), all("not checked", "failed", "skipped"));
  EXPECT_EQ(picture.StateOf(3), ProjectState::Skipped);
  EXPECT_NE(picture.NoteOf(1).find("Level 0, uses 0, used by 2\nfailed"), std::string::npos);
}

TEST_F(DependencyPictureTest, TheSameProjectIsSelectedEverywhere) {
  using Way = DependencyPicture::Way;
  frmBuilder& window = program.window;
  window.tvwProjects.Select(&window.tvwProjects.Item(kRootKey));
  EXPECT_EQ(Selected(), "");
  struct Step {
    Way way;
    const char* selected;
  };
  for (const Step& step :
       {Step{Way::Down, "Core"}, Step{Way::Down, "Money"}, Step{Way::Down, "Money"},
        Step{Way::ToUsed, "Money"}, Step{Way::Up, "Core"}, Step{Way::ToUser, "Till"},
        Step{Way::Down, "Stock"}, Step{Way::ToUsed, "Money"}}) {
    picture.Step(step.way);
    EXPECT_EQ(Selected(), step.selected);
    EXPECT_EQ(window.tvwProjects.Selected()->Text(), Group::Path(step.selected));
    EXPECT_EQ(window.lvwQueue.SelectedRow().Key(), Group::Path(step.selected));
  }
  window.tvwProjects.Select(window.tvwProjects.Item("r)" + Group::Path("Till")).Children().front());
  EXPECT_EQ(Selected(), "Till") << "one of its references";
  const GroupBox& box = picture.Layout().boxes[0];
  EXPECT_EQ(picture.At({box.x + 1, box.y + 1}), 0U);
  EXPECT_EQ(picture.At({box.x - 1, box.y + 1}), std::nullopt);
  const auto hit = picture.Find("O", SearchDirection::Next);
  EXPECT_EQ(Selected() + std::to_string(hit.number) + std::to_string(hit.of), "Stock44")
      << "all paths hold one";
  picture.Find("mon", SearchDirection::Here);
  EXPECT_EQ(Selected(), "Money");
}

TEST_F(DependencyPictureTest, FollowsTheGroup) {
  picture.Select(0);
  EXPECT_EQ(program.dependencies.txtDetails.text.Get(),
            "Core, checked\r\n" + Group::Path("Core") +
                "\r\nLevel 0\r\nUses: nothing\r\nUsed by: Till, Stock");
  program.window.ProjectMembers.Remove(Group::Path("Till"));
  picture.CatchUp();
  EXPECT_EQ(picture.Layout().boxes.size(), 3U);
  const ListRow* row = program.dependencies.lvwProjects.Find(Group::Path("Core"));
  EXPECT_EQ(row->SubItem(dependency_column::kUsers), "1");
  program.window.ClearBuildProject();
  picture.CatchUp();
  EXPECT_EQ(program.dependencies.summary.Get(), "The group has no projects.");
  picture.Step(DependencyPicture::Way::Down);
  EXPECT_EQ(Selected(), "");
}

TEST(PictureViewTest, KeepsWhatIsPointedAtAndLosesNoPicture) {
  PictureView view(2);
  view.SetPicture(1000, 500);
  view.SetWindow(500, 500);
  EXPECT_DOUBLE_EQ(view.Scale(), 0.5) << "fitted";
  const PicturePoint pointer{120, 260};
  const PicturePoint before = view.ToPicture(pointer);
  view.Zoom(3, pointer);
  EXPECT_NEAR(view.ToPicture(pointer).x, before.x, 1e-9);
  EXPECT_NEAR(view.ToPicture(pointer).y, before.y, 1e-9);
  view.Move(1e6, -1e6);
  EXPECT_LT(view.ToWindow({0, 0}).x, 500);
  EXPECT_GT(view.ToWindow({0, 500}).y, 0);
  GroupBox box;
  box.x = 900;
  box.y = 100;
  box.width = 60;
  box.height = 26;
  view.Reveal(box);
  EXPECT_GE(view.ToWindow({box.x, box.y}).x, 0);
  EXPECT_LE(view.ToWindow({box.x + box.width, box.y}).x, 500);
  view.ShowFull();
  EXPECT_DOUBLE_EQ(view.Scale(), 2);
  for (int i = 0; i < 100; ++i) view.Zoom(0.5, pointer);
  EXPECT_GT(view.Scale(), 0.05);
}

}  // namespace
}  // namespace gorbex::test
