#include <gtest/gtest.h>

#include "cli/junit_report.h"
#include "cli/run_record.h"

namespace gorbex::cli {
namespace {

using std::chrono::milliseconds;

TEST(RunReportsTest, JUnitTellsBuiltFailedAndLeftProjectsApart) {
  RunRecord record({"C:\\a&b.vbp", "C:\\c.vbp", "C:\\d.vbp"});
  record.On(ProjectCompiled{"C:\\a&b.vbp", true, milliseconds(1500), "ok", ""});
  record.On(ProjectCompiled{"C:\\c.vbp", false, milliseconds(20),
                            "\r\nLine 4 : \"<bad>\" \x01\xe9\r\nBuild of 'c' failed.", ""});
  record.On(RunEnded{RunResult::Finished, 1, 1, milliseconds(1520)});
  EXPECT_EQ(
      JUnitReport(record, "C:\\g.bpf"),
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<testsuite name=\"C:\\g.bpf\" tests=\"3\" failures=\"1\" errors=\"0\" skipped=\"1\" "
      "time=\"1.520\">\n"
      "  <testcase classname=\"C:\\a&amp;b.vbp\" name=\"a&amp;b.vbp\" time=\"1.500\"/>\n"
      "  <testcase classname=\"C:\\c.vbp\" name=\"c.vbp\" time=\"0.020\"><failure "
      "message=\"Line 4 : &quot;&lt;bad&gt;&quot; \xc3\xa9\">&#10;Line 4 : "
      "&quot;&lt;bad&gt;&quot; \xc3\xa9&#10;Build of 'c' failed.</failure></testcase>\n"
      "  <testcase classname=\"C:\\d.vbp\" name=\"d.vbp\" time=\"0.000\"><skipped/></testcase>\n"
      "</testsuite>\n");
}

TEST(RunReportsTest, AFailureWithoutLogTellsWhyThereIsNone) {
  RunRecord record({"C:\\a.vbp"});
  record.On(ProjectCompiled{"C:\\a.vbp", false, milliseconds(1), "", "File not found: 'VB6.EXE'"});
  EXPECT_EQ(record.Projects()[0].log, "File not found: 'VB6.EXE'");
}

}  // namespace
}  // namespace gorbex::cli
