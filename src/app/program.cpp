#include "app/program.h"

#include "app/offered_commands.h"
#include "core/file_tools.h"

namespace gorbex {

Program::Program(const PlatformServices& services, Dialogs& frontEnd)
    : platform(services),
      dialogs(frontEnd),
      report(dialogs),
      log(platform.files, platform.clock, dialogs, platform.programFolder),
      registry(platform.registry, report),
      options(registry, report),
      work([this] { return platform.keepOthersOut(StripPath(window.fileName)); }),
      shell(platform.processes, platform.events, platform.clock, work),
      group(window.ProjectMembers),
      references(registry, platform.files, platform.components, report),
      marking(window, references, group, log, report),
      queue(window, group, platform.files, dialogs, report),
      display(window, marking, queue, report),
      reader(window, platform.files, display),
      findings(reader),
      buildProject({window, platform.files, registry, options, log, dialogs, report, reader,
                    display, findings}),
      newBuildProject({window, platform.files, options, dialogs, report, buildProject, reader,
                       findings, display, queue, group}),
      treeCommands(window, reader, display, findings, dialogs),
      search(window, display),
      missingList(missing, window, display, marking),
      referenceUpdate(window, platform.files, registry, platform.components, display, report),
      freshness({window, options, platform.files, registry, platform.components, platform.clock,
                 log, referenceUpdate, platform.programFolder}),
      check({window, options, platform.files, registry, platform.components, referenceUpdate}),
      checkList(checkForm, window, display, check, platform.files),
      replaced(platform.files, log, platform.programFolder),
      compiler(window, registry, dialogs),
      start({window, registry, options, log, dialogs, report, buildProject, platform.files,
             compiler, replaced, work}),
      session(window, platform.sourceControl, work, dialogs, report),
      latest(window, session, log, dialogs, report),
      changes(window, session),
      labelling(window, session, dialogs, report),
      browse({window, session, platform.files, referenceUpdate, log, dialogs, report, display}),
      values(platform.files),
      version(values, options, dialogs),
      script(window, platform.files, dialogs, report),
      compile({window, platform.files, shell, dialogs, log, compiler, work, freshness,
               platform.programFolder}),
      run({window, options, log, dialogs, report, platform.events, platform.clock, shell, work,
           latest, referenceUpdate, values, version, script, compile, replaced, freshness, group,
           platform.files}),
      failed(run.events, compile.ended, window.tvwProjects.cleared),
      editor(options, platform.processes, dialogs),
      failureSteps(failed, editor),
      notice(run.events, platform.clock),
      reports({window, group, check, platform.files}),
      lastRun({window, options, group, platform.clock}),
      lastRunList(
          {lastRunForm, window, lastRun, reports, display, platform.files, dialogs, report}),
      compiled({window, platform.files, queue, display, work}, compile.ended),
      marks(window, group, failed, report),
      outdated(window, group, work, freshness),
      picture(dependencies, window, group, display, run.events, compile.ended,
              [this] { return outdated.Judged(); }),
      mail({window, options, registry, platform.files, log, report, platform.mail, session, latest,
            compile, work, platform.events}),
      registration(window, shell, dialogs, report, platform.registrationAdvice,
                   [this] {
                     marking.MarkAll();
                     display.RefreshReferences();
                   }),
      shutDown(
          {window, registry, options, log, dialogs, report, buildProject, run, work, replaced}),
      immediate({window, dialogs, report, script, compile}),
      settings(window, options, dialogs, report),
      logViewer(logs, log, platform.files, dialogs, report),
      componentTest({window, selectControl, testControl, platform.objects, dialogs, report}) {
  subscriptions_.Add(work.turnTaken, [this] { replaced.WriteBack(); });
  ConnectFileMenu();
  ConnectQueueMenu();
  ConnectToolsMenu();
  ConnectSourceControl();
  ConnectComponentTest();
  OfferCommands(*this);
}

void Program::ConnectFileMenu() {
  MainMenu& menu = window.menu;
  menu.mnuFileNew.SetHandler([this] { buildProject.mnuFileNew_Click(); });
  menu.mnuFileNewFrom.SetHandler([this] { newBuildProject.mnuFileNewFrom_Click(); });
  subscriptions_.Add(newBuildProject.made, [this] { checkList.TellOfNew(); });
  menu.mnuFileOpen.SetHandler([this] { buildProject.mnuFileOpen_Click(); });
  menu.mnuFileSave.SetHandler([this] { buildProject.mnuFileSave_Click(); });
  menu.mnuFileSaveAs.SetHandler([this] { buildProject.mnuFileSaveAs_Click(); });
  menu.mnuFileBuild.SetHandler([this] { run.mnuFileBuild_Click(); });
  menu.mnuFileGenScript.SetHandler([this] { script.mnuFileGenScript_Click(); });
  menu.mnuFileGenScript.enabled.Set(false);
  menu.mnuFileStop.SetHandler([this] { run.mnuFileStop_Click(); });
  menu.mnuFileStop.enabled.Set(false);
  subscriptions_.Add(work.changed,
                     [this] { window.menu.mnuFileStop.enabled.Set(work.Goes(Task::Program)); });
  menu.mnuFileExit.SetHandler([this] { shutDown.mnuFileExit_Click(); });
  for (std::size_t i = 0; i < menu.mnuFileMRU.size(); ++i) {
    menu.mnuFileMRU[i].SetHandler([this, i] { buildProject.mnuFileMRU_Click(i); });
    menu.mnuFileMRU[i].visible.Set(false);
  }
}

void Program::ConnectQueueMenu() {
  MainMenu& menu = window.menu;
  menu.mnuQueueAdd.SetHandler([this] { queue.mnuQueueAdd_Click(); });
  menu.mnuQueueAddAll.SetHandler([this] { queue.mnuQueueAddAll_Click(); });
  menu.mnuQueueArrange.SetHandler([this] { queue.mnuQueueArrange_Click(); });
  menu.mnuQueueMoveUp.SetHandler([this] { queue.mnuQueueMoveUp_Click(); });
  menu.mnuQueueMoveDown.SetHandler([this] { queue.mnuQueueMoveDown_Click(); });
  menu.mnuQueueRemove.SetHandler([this] { queue.mnuQueueRemove_Click(); });
  menu.mnuQueueEmpty.SetHandler([this] { queue.mnuQueueEmpty_Click(); });
  menu.mnuQueueMarkAll.SetHandler([this] { queue.mnuQueueMarkAll_Click(); });
  menu.mnuQueueUnMarkAll.SetHandler([this] { queue.mnuQueueUnMarkAll_Click(); });
  menu.mnuQueueMarkUses.SetHandler([this] { marks.mnuQueueMarkUses_Click(); });
  menu.mnuQueueMarkUsers.SetHandler([this] { marks.mnuQueueMarkUsers_Click(); });
  menu.mnuQueueMarkFailed.SetHandler([this] { marks.mnuQueueMarkFailed_Click(); });
  menu.mnuQueueMarkOutdated.SetHandler([this] { outdated.mnuQueueMarkOutdated_Click(); });
  menu.mnuQueueBuildFailed.SetHandler([this] { run.BuildAgain(failed.All()); });
  menu.mnuQueueBuild.SetHandler([this] { immediate.mnuQueueBuild_Click(); });
}

void Program::ConnectToolsMenu() {
  MainMenu& menu = window.menu;
  menu.mnuToolsBuildPath.SetHandler([this] { settings.mnuToolsBuildPath_Click(); });
  menu.mnuToolsVersion.SetHandler([this] { settings.mnuToolsVersion_Click(); });
  menu.mnuToolsBuildOptions.SetHandler([this] { settings.mnuToolsBuildOptions_Click(); });
  menu.mnuWindowLastRun.SetHandler([this] { lastRunList.mnuWindowLastRun_Click(); });
  menu.mnuWindowViewLogs.SetHandler([this] { logViewer.mnuWindowViewLogs_Click(); });
  menu.mnuWindowDependencies.SetHandler([this] { picture.mnuWindowDependencies_Click(); });
  menu.mnuToolsDependancies.SetHandler([this] { marking.mnuToolsDependancies_Click(); });
  menu.mnuToolsCheck.SetHandler([this] { checkList.mnuToolsCheck_Click(); });
  subscriptions_.Add(checkForm.fileWanted,
                     [this](const std::string& file, const std::optional<std::size_t>& line) {
                       editor.Open(file, line);
                     });
  menu.mnuWindowNextFailure.SetHandler([this] { failureSteps.mnuWindowNextFailure_Click(); });
  menu.mnuWindowPreviousFailure.SetHandler(
      [this] { failureSteps.mnuWindowPreviousFailure_Click(); });
  menu.mnuToolsMissing.SetHandler([this] { missingList.mnuToolsMissing_Click(); });
  menu.mnuToolsInBox.SetHandler([this] { mail.mnuToolsInBox_Click(); });
  subscriptions_.Add(window.tmrOutlook.elapsed, [this] { mail.tmrOutlook_Timer(); });
  menu.mnuDataPopupReg.SetHandler([this] { registration.mnuDataPopupReg_Click(); });
  menu.mnuDataPopupUnReg.SetHandler([this] { registration.mnuDataPopupUnReg_Click(); });
  menu.mnuTreePopupAddProject.SetHandler([this] { treeCommands.mnuTreePopupAddProject_Click(); });
  menu.mnuTreePopupRemoveProject.SetHandler(
      [this] { treeCommands.mnuTreePopupRemoveProject_Click(); });
  menu.mnuTreePopupBuildNowDefault.SetHandler(
      [this] { immediate.mnuTreePopupBuildNowDefault_Click(); });
  menu.mnuTreePopupBuildNowNewLocation.SetHandler(
      [this] { immediate.mnuTreePopupBuildNowNewLocation_Click(); });
}

void Program::ConnectSourceControl() {
  MainMenu& menu = window.menu;
  menu.mnuToolsLogin.SetHandler([this] { session.mnuToolsLogin_Click(); });
  menu.mnuToolsLabel.SetHandler([this] { labelling.mnuToolsLabel_Click(); });
  menu.mnuToolsHighlight.SetHandler([this] { changes.mnuToolsHighlight_Click(); });
  menu.mnuToolsGetLatestALL.SetHandler([this] { latest.mnuToolsGetLatestALL_Click(); });
  menu.mnuToolsGetLatestChanged.SetHandler([this] { latest.mnuToolsGetLatestChanged_Click(); });
  menu.mnuTreePopupGetLatest.SetHandler([this] { latest.mnuTreePopupGetLatest_Click(); });
  menu.mnuDataPopupBrowse.SetHandler([this] { browse.mnuDataPopupBrowse_Click(); });
  // Source control offers these after a login.
  menu.mnuToolsLabel.enabled.Set(false);
  menu.mnuToolsHighlight.enabled.Set(false);
  menu.mnuToolsGetLatest.enabled.Set(false);
}

void Program::ConnectComponentTest() {
  // A component that was tested is compiled, registered and unregistered by other programs.
  subscriptions_.Add(shell.starting, [this] { platform.objects.LetGoOfUnused(); });
  window.menu.mnuQueueTest.SetHandler([this] { componentTest.mnuQueueTest_Click(); });
  selectControl.cmdTest.SetHandler([this] { componentTest.cmdTest_Click(); });
  selectControl.cmdClose.SetHandler([this] { componentTest.cmdClose_Click(); });
}

}  // namespace gorbex
