; The installer, for the user who runs it alone:
;   makensis -DTARGET=x86-unicode -DVERSION=1.2.3 -DFILES=FOLDER -DOUTPUT=SETUP.exe gorbexbuilder.nsi
; FILES holds what is installed, as `cmake --install` lays it out. The program writes its logs beside
; itself, so it is put where its user may write.

Target ${TARGET}
!include MUI2.nsh

!define NAME "GorbexBuilder"
!define PUBLISHER "The GorbexBuilder developers"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define SETTINGS_KEY "Software\Tovarren\GorbexBuilder"
!define FILE_CLASS "GorbexBuilder.Project"

Name "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" InstallLocation
SetCompressor /SOLID lzma
BrandingText " "
ManifestDPIAware true

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${NAME} set-up"
VIAddVersionKey CompanyName "${PUBLISHER}"
VIAddVersionKey LegalCopyright "${PUBLISHER}, MIT licence"

!define MUI_ICON gorbexbuilder.ico
!define MUI_UNICON gorbexbuilder.ico
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\gorbexbuilder.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs cannot be written to. Ends with exit code 2 then.
!macro RefuseWhileRunning FILE
  ClearErrors
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    FileOpen $0 "$INSTDIR\${FILE}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "${FILE} in $INSTDIR is running. Close it, then start this again." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

!macro TellShell
  ; SHCNE_ASSOCCHANGED: icons and associations are looked up anew.
  System::Call "shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)"
!macroend

Section
  !insertmacro RefuseWhileRunning gorbexbuilder.exe
  !insertmacro RefuseWhileRunning gorbex.exe
  ; The pages of an older version. In a folder without one, "docs" is the user's own.
  ${If} ${FileExists} "$INSTDIR\gorbexbuilder.exe"
    RMDir /r "$INSTDIR\docs"
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${FILES}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\gorbexbuilder.exe"

  ; A program that opens these files already keeps them; this one is offered beside it.
  ReadRegStr $0 HKCU "Software\Classes\.bpf" ""
  ${If} $0 == ""
    WriteRegStr HKCU "Software\Classes\.bpf" "" "${FILE_CLASS}"
  ${EndIf}
  WriteRegStr HKCU "Software\Classes\.bpf\OpenWithProgids" "${FILE_CLASS}" ""
  WriteRegStr HKCU "Software\Classes\${FILE_CLASS}" "" "${NAME} build project"
  WriteRegStr HKCU "Software\Classes\${FILE_CLASS}\DefaultIcon" "" "$INSTDIR\gorbexbuilder.exe,0"
  WriteRegStr HKCU "Software\Classes\${FILE_CLASS}\shell\open\command" "" '"$INSTDIR\gorbexbuilder.exe" "%1"'
  !insertmacro TellShell

  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayName "${NAME}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\gorbexbuilder.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" Publisher "${PUBLISHER}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" EstimatedSize ${KILOBYTES}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Section Uninstall
  !insertmacro RefuseWhileRunning gorbexbuilder.exe
  !insertmacro RefuseWhileRunning gorbex.exe
  Delete "$INSTDIR\gorbexbuilder.exe"
  Delete "$INSTDIR\gorbex.exe"
  Delete "$INSTDIR\CHANGELOG.md"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\README.md"
  RMDir /r "$INSTDIR\docs"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\${NAME}.lnk"

  ReadRegStr $0 HKCU "Software\Classes\.bpf" ""
  ${If} $0 == "${FILE_CLASS}"
    DeleteRegValue HKCU "Software\Classes\.bpf" ""
  ${EndIf}
  DeleteRegValue HKCU "Software\Classes\.bpf\OpenWithProgids" "${FILE_CLASS}"
  DeleteRegKey /ifempty HKCU "Software\Classes\.bpf\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "Software\Classes\.bpf"
  DeleteRegKey HKCU "Software\Classes\${FILE_CLASS}"
  !insertmacro TellShell
  DeleteRegKey HKCU "${UNINSTALL_KEY}"

  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
    "Delete your activity logs, the compiler's last log and your settings too?" /SD IDNO IDNO keep
  RMDir /r "$INSTDIR\Logs"
  Delete "$INSTDIR\VBResult.log"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
keep:
  RMDir "$INSTDIR"
SectionEnd
