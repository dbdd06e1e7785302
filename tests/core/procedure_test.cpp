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

TEST_F(ProcedureTest, AnswersLeaveRepeatOrPassOver) {
  struct Case {
    Answer answer;
    std::string trace;
    bool completed;
  };
  for (const Case& c : {Case{Answer::Abort, "a1 ", false}, Case{Answer::Ignore, "a1 0 b ", true},
                        Case{Answer::Retry, "a1 a2 7 b ", true}}) {
    dialogs.answers = {c.answer};
    std::string trace;
    int tries = 0;
    const bool completed = Procedure(program.report, ": m.p").Run([&](Procedure& on) {
      const int value = on([&] {
        trace += "a" + std::to_string(++tries) + " ";
        if (tries == 1) throw RuntimeError(ErrorNumber::Overflow);
        return 7;
      });
      trace += std::to_string(value) + " ";
      on([&] { trace += "b "; });
    });
    EXPECT_EQ(trace, c.trace);
    EXPECT_EQ(completed, c.completed);
  }
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
