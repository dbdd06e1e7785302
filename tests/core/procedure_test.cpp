#include "core/procedure.h"

#include "tests/support/program_fixture.h"

namespace gorbex::test {
namespace {

using ProcedureTest = ProgramFixture;

TEST_F(ProcedureTest, ReportNamesNumberDescriptionLineAndProcedure) {
  unsigned line = 0;
  Procedure(program.report, ": frmBuilder.SaveProject").Run([&](Procedure& on) {
    line = __LINE__ + 1;
    on([] { throw RuntimeError(ErrorNumber::PathNotFound, "C:\\x"); });
  });
  EXPECT_EQ(platform.journal,
            Journal{"show [AbortRetryIgnore Exclamation GorbexBuilder Error.] Error 76: \r\n"
                    "Path not found: 'C:\\x'\r\nOccurred at line " +
                    std::to_string(line) + "in GorbexBuilder: frmBuilder.SaveProject"});
}

TEST_F(ProcedureTest, AbortLeavesTheInnerProcedureAloneAndOutOfMemoryIsReported) {
  Procedure(program.report, ": outer.p").Run([&](Procedure& outer) {
    outer([&] {
      Procedure(program.report, ": inner.p").Run([](Procedure& on) {
        on([] { throw std::bad_alloc(); });
      });
    });
    throw RuntimeError(ErrorNumber::Overflow);
  });
  EXPECT_EQ(Effects(), (Journal{Reported(7, "Out of memory", ": inner.p"),
                                Reported(6, "Overflow", ": outer.p")}));
}

}  // namespace
}  // namespace gorbex::test
