#include <ostream>

#include "build/side_by_side.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/run_options.h"
#include "cli/session.h"
#include "cli/text_output.h"
#include "freshness/build_plan.h"

namespace gorbex::cli {
namespace {

struct PlanArguments {
  std::string file;
  RunOptions run;
  bool allReasons = false;
};

Json SecondsJson(const std::optional<std::chrono::milliseconds>& duration) {
  return duration ? Json(static_cast<double>(duration->count()) / 1000) : Json();
}

Json ProjectJson(const PlannedProject& project) {
  Json reasons = Json::array();
  for (const Reason& reason : project.judgement.reasons) {
    reasons.push_back({{"kind", NameOf(reason.kind)},
                       {"subject", JsonText(reason.subject)},
                       {"text", JsonText(reason.text)}});
  }
  return {{"path", JsonText(project.path)},
          {"action", project.judgement.IsUpToDate() ? "upToDate" : "build"},
          {"reasons", reasons},
          {"decidedBy", JsonTexts(project.decidedBy)},
          {"lastSeconds", SecondsJson(project.judgement.lastDuration)}};
}

Json PlanJson(const BuildPlan& plan) {
  Json projects = Json::array();
  for (const PlannedProject& project : plan.projects) projects.push_back(ProjectJson(project));
  return {{"projects", projects},
          {"build", plan.toBuild},
          {"mayBeSkipped", plan.mayBeSkipped},
          {"upToDate", plan.upToDate},
          {"mayBeBuilt", plan.mayBeBuilt},
          {"estimatedSeconds", SecondsJson(plan.estimate)}};
}

std::string WhyText(const PlannedProject& project, bool allReasons) {
  const Judgement& judgement = project.judgement;
  const std::size_t most = allReasons ? judgement.reasons.size() : 3;
  const std::string text =
      judgement.IsUpToDate() ? "since " + judgement.since : ReasonsText(judgement.reasons, most);
  return Plain(text + UnlessText(project));
}

void PrintPlan(std::ostream& out, const BuildPlan& plan, bool allReasons) {
  constexpr std::size_t kNameWidth = 32;
  constexpr std::size_t kTimeWidth = 9;
  for (const PlannedProject& project : plan.projects) {
    const Judgement& judgement = project.judgement;
    out << (judgement.IsUpToDate() ? "up to date  " : "build       ")
        << Padded(FileName(project.path), kNameWidth)
        << Padded(judgement.lastDuration ? Seconds(*judgement.lastDuration) : "", kTimeWidth)
        << "  " << WhyText(project, allReasons) << '\n';
  }
  out << CountsText(plan);
  if (plan.estimate) out << ", about " << Seconds(*plan.estimate);
  out << '\n';
}

// Compilers that run side by side need less time than the sum of theirs.
void EstimateSideBySide(Program& program, BuildPlan& plan) {
  const std::size_t places = program.options.Places();
  if (places == 1 || !plan.estimate) return;
  std::vector<std::string> paths;
  for (const PlannedProject& project : plan.projects) {
    if (!project.judgement.IsUpToDate()) paths.push_back(project.path);
  }
  const RunSchedule schedule =
      ScheduleOf(program.window, program.group, program.platform.files, program.freshness, paths);
  if (const auto estimate = schedule.TimeLeft(places, {})) plan.estimate = estimate->left;
}

void Plan(Frame& frame, const PlanArguments& arguments) {
  Session session(frame);
  session.OpenToLook(arguments.file);
  UseRunOptions(session, arguments.run);
  Program& program = session.program();
  BuildPlan plan = PlanOf(program.window, program.group, program.freshness);
  EstimateSideBySide(program, plan);
  if (frame.json) return PrintJson(frame, PlanJson(plan));
  PrintPlan(frame.streams.out, plan, arguments.allReasons);
}

}  // namespace

void AddPlanCommand(CLI::App& app, Frame& frame) {
  CLI::App& command =
      AddJsonCommand(app, frame, "plan", "What \"build --outdated\" would do, and why");
  auto arguments = std::make_shared<PlanArguments>();
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  AddRunOptions(command, arguments->run, "Plan");
  command.add_flag("--all", arguments->allReasons, "Print every reason");
  command.callback([&frame, arguments] { Plan(frame, *arguments); });
}

}  // namespace gorbex::cli
