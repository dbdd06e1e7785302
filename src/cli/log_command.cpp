#include <algorithm>
#include <ostream>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "core/text.h"

namespace gorbex::cli {
namespace {

bool IsDay(const std::string& day) {
  return day.size() == 8 && std::ranges::all_of(day, IsDigit);
}

Json LinesJson(std::string_view text) {
  Json lines = Json::array();
  for (auto line : Split(text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) lines.push_back(JsonText(line));
  }
  return lines;
}

void Log(Frame& frame, const std::string& asked) {
  Session session(frame);
  const ActivityLog& log = session.program().log;
  const std::string day = asked.empty() ? log.Today() : asked;
  if (!IsDay(day)) throw Failure(day + ": a day is written ddmmyyyy");
  const std::string file = log.FileOf(day);
  if (!FileExists(session.program().platform.files, file)) {
    throw Failure("no log of this day: " + Plain(file));
  }
  const std::string text = session.program().platform.files.Read(file);
  if (!frame.json) {
    frame.streams.out << Plain(text);
    return;
  }
  PrintJson(frame, {{"day", day}, {"file", JsonText(file)}, {"lines", LinesJson(text)}});
}

}  // namespace

void AddLogCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "log", "Print the activity log of a day");
  auto day = std::make_shared<std::string>();
  command.add_option("ddmmyyyy", *day, "The day; today when left out");
  command.callback([&frame, day] { Log(frame, *day); });
}

}  // namespace gorbex::cli
