#include "analysis/group_svg.h"

#include <gtest/gtest.h>

namespace gorbex::test {
namespace {

TEST(GroupSvgTest, NamesAreEscapedAndStatesAreToldInWords) {
  const std::vector<PictureProject> projects = {{"<A&\"", "C:\\a.vbp"}, {"B", "b"}, {"C", "c"}};
  const GroupLayout layout = LayOut(DependencyGraph({{1}, {0}, {}}), projects);
  const std::string plain = GroupSvg(layout, projects, "Group <1>\x01");
  const std::string svg = GroupSvg(layout, projects, "Group <1>\x01",
                                   {ProjectState::Failed, ProjectState::Built, ProjectState::None});
  for (const char* wanted :
       {"<title>Group &lt;1&gt; </title>", ">&lt;A&amp;&quot;</text>",
        "C:\\a.vbp&#10;Level 0, uses 1, used by 1, in a circle&#10;failed",
        "class=\"failed circle\"", "<desc>3 projects in 1 level", "2 use one another in circles",
        "prefers-color-scheme", ">in a circle</text>", ">not checked</text>"}) {
    EXPECT_NE(svg.find(wanted), std::string::npos) << wanted;
  }
  EXPECT_EQ(svg.find("skipped"), std::string::npos);
  for (const char* state : {"failed", "not checked"}) {
    EXPECT_EQ(plain.find(state), std::string::npos) << state;
  }
}

}  // namespace
}  // namespace gorbex::test
