#include "build/terms_in_force.h"

#include "platform/code_page.h"

namespace gorbex {

std::vector<BuildTerm> TermsInForce(frmBuilder& window, const clsOptions& options) {
  MainMenu& menu = window.menu;
  std::vector<BuildTerm> terms;
  const auto add = [&](std::string text, Command& setBy) {
    terms.push_back({std::move(text), &setBy});
  };
  const auto addIf = [&](bool isOn, const char* text, Command& setBy) {
    if (isOn) add(text, setBy);
  };
  add(options.Compatible ? "Keeps compatibility" : "Breaks compatibility",
      menu.mnuToolsBuildOptions);
  if (!options.Compatible) terms.back().weight = BuildTerm::Weight::Warning;
  addIf(options.GetLatest, "latest sources", menu.mnuToolsBuildOptions);
  addIf(options.ChangeRefs, "updates references", menu.mnuToolsBuildOptions);
  addIf(EqualsIgnoringCase(options.DebugBuild, "true"), "debug", menu.mnuToolsBuildOptions);
  const std::string& version = options.VersionComponents;
  add(version.empty() ? "each project's version" : "version " + version, menu.mnuToolsVersion);
  const std::string& folder = window.buildDirectory;
  add(folder.empty() ? "to each project's folder" : "to " + folder, menu.mnuToolsBuildPath);
  addIf(options.StopProcessing, "asks after a failure", menu.mnuToolsBuildOptions);
  addIf(options.SkipUsersOfFailed, "skips users of failed projects", menu.mnuToolsBuildOptions);
  addIf(options.Jobs == 0, "as many at once as processors", menu.mnuToolsBuildOptions);
  if (options.Jobs > 1) add(std::to_string(options.Jobs) + " at once", menu.mnuToolsBuildOptions);
  addIf(options.SkipUpToDate, "skips what is up to date", menu.mnuToolsBuildOptions);
  addIf(menu.mnuToolsInBox.checked.Get(), "mail requests on", menu.mnuToolsInBox);
  return terms;
}

std::string TermsLine(const std::vector<BuildTerm>& terms) {
  std::string line;
  for (const BuildTerm& term : terms) line.append(line.empty() ? "" : " - ").append(term.text);
  return line;
}

}  // namespace gorbex
