#include "cli/junit_report.h"

#include <gtest/gtest.h>

#include "core/run_record.h"

namespace gorbex::test {
namespace {

TEST(JUnitReportTest, TellsOfARunThatWasAborted) {
  RunRecord record({"C:\\a.vbp"});
  record.On(QuestionAnswered{{"Error 61: \r\nDisk full"}, Answer::Abort});
  record.On(RunEnded{RunResult::Aborted, 0, 0, std::chrono::milliseconds(20)});
  EXPECT_NE(cli::JUnitReport(record, "C:\\g.bpf")
                .find("<error message=\"the run was aborted at an error\">Error 61: &#10;Disk "
                      "full</error>"),
            std::string::npos);
}

TEST(JUnitReportTest, TellsBuiltFailedAndLeftProjectsApart) {
  using std::chrono::milliseconds;
  RunRecord record({"C:\\a&b.vbp", "C:\\c.vbp", "C:\\d.vbp", "C:\\e.vbp"});
  const LatestResult notGot{LatestResult::Kind::Failed, "fatal: <gone>\nhint"};
  record.On(LatestGot{"C:\\c.vbp", notGot});
  record.On(LatestGot{"C:\\e.vbp", notGot});
  record.On(ProjectCompiled{"C:\\e.vbp", true, milliseconds(0), "ok", ""});
  record.On(ProjectCompiled{"C:\\a&b.vbp", true, milliseconds(1500), "ok", ""});
  record.On(ProjectCompiled{"C:\\c.vbp", false, milliseconds(20),
                            "\r\nLine 4 : \"<bad>\" \x01\xe9\r\nBuild of 'c' failed.", ""});
  record.On(QuestionAnswered{{"Not changed:\r\nC:\\c.vbp"}, Answer::Ok});
  record.On(RunEnded{RunResult::Finished, 1, 1, milliseconds(1520), {"C:\\c.vbp"}});
  EXPECT_EQ(
      cli::JUnitReport(record, "C:\\g.bpf"),
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<testsuite name=\"C:\\g.bpf\" tests=\"5\" failures=\"1\" errors=\"2\" skipped=\"1\" "
      "time=\"1.520\">\n"
      "  <testcase classname=\"C:\\a&amp;b.vbp\" name=\"a&amp;b.vbp\" time=\"1.500\"/>\n"
      "  <testcase classname=\"C:\\c.vbp\" name=\"c.vbp\" time=\"0.020\"><failure "
      "message=\"Line 4 : &quot;&lt;bad&gt;&quot; \xc3\xa9\">The latest sources were not got: "
      "fatal: &lt;gone&gt;&#10;hint&#10;&#10;Line 4 : "
      "&quot;&lt;bad&gt;&quot; \xc3\xa9&#10;Build of 'c' failed.</failure></testcase>\n"
      "  <testcase classname=\"C:\\d.vbp\" name=\"d.vbp\" time=\"0.000\"><skipped "
      "message=\"the run ended before its turn\"/></testcase>\n"
      "  <testcase classname=\"C:\\e.vbp\" name=\"e.vbp\" time=\"0.000\"><error message=\"The "
      "latest "
      "sources were not got: fatal: &lt;gone&gt;\">The latest sources were not got: fatal: "
      "&lt;gone&gt;&#10;hint</error></testcase>\n"
      "  <testcase classname=\"C:\\g.bpf\" name=\"run\" time=\"1.520\"><error message=\"project "
      "files could not be changed as asked\">Not changed:&#10;C:\\c.vbp</error></testcase>\n"
      "</testsuite>\n");
}

}  // namespace
}  // namespace gorbex::test
