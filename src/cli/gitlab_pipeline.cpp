#include "cli/gitlab_pipeline.h"

#include <nlohmann/json.hpp>

namespace gorbex::cli {
namespace {

// A JSON text is a YAML text as well.
std::string YamlText(const std::string& text) {
  return nlohmann::json(text).dump();
}

std::string ListOf(const std::vector<std::string>& texts) {
  std::string list = "[";
  for (const std::string& text : texts) list += (list.size() > 1 ? ", " : "") + YamlText(text);
  return list + "]";
}

// Between single quotes every shell of a runner takes a text as it is.
std::string Argument(const std::string& text) {
  return "'" + text + "'";
}

std::string Artifacts(const std::vector<std::string>& paths) {
  return "  artifacts:\n    when: always\n    paths: " + ListOf(paths) + "\n";
}

std::string Script(const std::vector<std::string>& commands) {
  std::string script = "  script:\n";
  for (const std::string& command : commands) script += "    - " + YamlText(command) + "\n";
  return script;
}

}  // namespace

std::string GitLabPipeline::Text() const {
  std::string text = "# Written by gorbex pipeline, to be written again when projects change.\n";
  text += "stages: [\"build\", \"report\"]\n\n";
  std::string defaults;
  if (!tags.empty()) defaults += "  tags: " + ListOf(tags) + "\n";
  if (!image.empty()) defaults += "  image: " + YamlText(image) + "\n";
  if (!before.empty()) defaults += "  before_script: " + ListOf(before) + "\n";
  if (!defaults.empty()) text += "default:\n" + defaults + "\n";
  for (const PipelineJob& job : jobs) {
    std::vector<std::string> needs;
    std::vector<std::string> commands;
    for (const std::size_t need : job.needs) {
      needs.push_back(jobs[need].name);
      commands.push_back("gorbex register " + Argument(jobs[need].binary));
    }
    commands.push_back("gorbex build " + Argument(buildProject) + " " + Argument(job.project) +
                       " --yes --result " + Argument(job.result));
    text += YamlText(job.name) + ":\n  stage: build\n  needs: " + ListOf(needs) + "\n";
    text += Script(commands) + Artifacts({job.artifact, job.resultArtifact}) + "\n";
  }
  const std::string script = folder + "register.svb";
  const std::string report = folder + "report.xml";
  text += "report:\n  stage: report\n  when: always\n";
  text += Script({"gorbex pipeline " + Argument(buildProject) + " --join --script " +
                  Argument(script) + " --junit " + Argument(report)});
  return text + Artifacts({script, report}) + "    reports:\n      junit: " + YamlText(report) +
         "\n";
}

}  // namespace gorbex::cli
