#pragma once

#include <CLI/CLI.hpp>

#include "cli/frame.h"
#include "cli/session.h"
#include "core/list_view.h"

namespace gorbex::cli {

// Each adds one command to the command line; running it leaves its exit status in the frame.
void AddBuildCommand(CLI::App& app, Frame& frame);
void AddCheckCommand(CLI::App& app, Frame& frame);
void AddShowCommand(CLI::App& app, Frame& frame);
void AddReferencesCommand(CLI::App& app, Frame& frame);
void AddQueueCommand(CLI::App& app, Frame& frame);
void AddPipelineCommand(CLI::App& app, Frame& frame);
void AddPlanCommand(CLI::App& app, Frame& frame);
void AddGraphCommand(CLI::App& app, Frame& frame);
void AddInitCommand(CLI::App& app, Frame& frame);
void AddMissingCommand(CLI::App& app, Frame& frame);
void AddValueCommand(CLI::App& app, Frame& frame);
void AddRegisterCommands(CLI::App& app, Frame& frame);
void AddSettingsCommand(CLI::App& app, Frame& frame);
void AddLogCommand(CLI::App& app, Frame& frame);
void AddSourceControlCommands(CLI::App& app, Frame& frame);
void AddServeCommand(CLI::App& app, Frame& frame);
void AddCompletionCommand(CLI::App& app, Frame& frame);

/// A command that may print JSON.
CLI::App& AddJsonCommand(CLI::App& app, Frame& frame, const std::string& name,
                         const std::string& description);

/// Adds --yes and --no to a command that may ask questions.
void AddAnswers(CLI::App& command, Frame& frame);

/// Names every circle of projects with all its members.
void WarnOfCycles(const Session& session, const std::vector<std::vector<std::string>>& cycles);

/// A typed build folder in the form the program keeps it: with a trailing "\".
[[nodiscard]] std::string BuildFolder(const Session& session, const std::string& typed);

/// The projects that are marked for a build, in the queue's order.
[[nodiscard]] std::vector<std::string> CheckedProjects(const ListView& queue);

/// The rows of the queue as lines for a reader.
void PrintQueue(std::ostream& out, const ListView& queue);

}  // namespace gorbex::cli
