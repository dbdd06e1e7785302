; The installer, only for the user who runs it:
;   makensis -DTARGET=x86-unicode -DVERSION=1.2.3 -DFILES=FOLDER -DOUTPUT=SETUP.exe gorbexbuilder.nsi
; FILES holds what is installed, as `cmake --install` lays it out, with the list of it: installed.txt
; has a line for each file, and then for each folder, with "\" at its end, those below before those
; above. The program writes its logs beside itself, so it is put where its user may write.

Target ${TARGET}
!include FileFunc.nsh
!include MUI2.nsh
!include TextFunc.nsh

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
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE ChooseOwnFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\gorbexbuilder.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

!macro Refuse TEXT
  MessageBox MB_OK|MB_ICONEXCLAMATION "${TEXT}" /SD IDOK
  SetErrorLevel 2
  Quit
!macroend

; A program that runs cannot be written to. Ends with exit code 2 then.
!macro RefuseWhileRunning FILE
  ClearErrors
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    FileOpen $0 "$INSTDIR\${FILE}" a
    ${If} ${Errors}
      !insertmacro Refuse "${FILE} in $INSTDIR is running. Close it, then start this again."
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; Deletes by name what was installed, and folders that are empty after that: what else is in them is
; the user's.
!macro DeleteInstalled
  ClearErrors
  FileOpen $0 "$INSTDIR\installed.txt" r
  ${IfNot} ${Errors}
    ${Do}
      FileRead $0 $1
      ${If} ${Errors}
        ${ExitDo}
      ${EndIf}
      ${TrimNewLines} "$1" $1
      StrCpy $2 $1 1 -1
      ${If} $2 == "\"
        StrCpy $1 $1 -1
        RMDir "$INSTDIR\$1"
      ${Else}
        Delete "$INSTDIR\$1"
      ${EndIf}
      ClearErrors
    ${Loop}
    FileClose $0
    Delete "$INSTDIR\installed.txt"
  ${EndIf}
!macroend

!macro TellShell
  ; SHCNE_ASSOCCHANGED: icons and associations are looked up anew.
  System::Call "shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)"
!macroend

; The files are installed into a separate folder: one that is ours already, or a new one of our name.
Function ChooseOwnFolder
  ${If} ${FileExists} "$INSTDIR\gorbexbuilder.exe"
  ${AndIf} ${FileExists} "$INSTDIR\uninstall.exe"
    Return
  ${EndIf}
  StrCpy $0 $INSTDIR "" -1
  ${If} $0 == "\"
    StrCpy $INSTDIR $INSTDIR -1
  ${EndIf}
  ${GetFileName} "$INSTDIR" $0
  ${DirState} "$INSTDIR" $1
  ${If} $0 != "${NAME}"
  ${OrIf} $1 == 1
    StrCpy $INSTDIR "$INSTDIR\${NAME}"
  ${EndIf}
FunctionEnd

; A silent set-up has no page that its user could leave. The system passes over a folder that cannot
; be used, and then takes another.
Function .onInit
  ${If} ${Silent}
    ; In quotes together with the folder, "/D=" is no option to the system.
    System::Call "kernel32::GetCommandLineW() t .r1"
    System::Call "shlwapi::StrStrIW(t r1, t '/D=') t .r0"
    StrCpy $2 $0 3
    StrCpy $0 $0 "" 3
    ${If} $2 == "/D="
    ${AndIf} $0 != ""
    ${AndIf} $0 != $INSTDIR
    ${AndIf} $0 != "$INSTDIR\"
      !insertmacro Refuse "The folder of /D= cannot be used. It is written as it is, without quotes: $0"
    ${EndIf}
    Call ChooseOwnFolder
  ${EndIf}
FunctionEnd

Section
  !insertmacro RefuseWhileRunning gorbexbuilder.exe
  !insertmacro RefuseWhileRunning gorbex.exe
  !insertmacro DeleteInstalled
  ClearErrors
  SetOutPath "$INSTDIR"
  ${IfNot} ${FileExists} "$INSTDIR\*.*"
    !insertmacro Refuse "The folder $INSTDIR cannot be made."
  ${EndIf}
  File /r "${FILES}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro Refuse "Not all files could be written to $INSTDIR."
  ${EndIf}
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\gorbexbuilder.exe"

  ; A program that opens these files already keeps them; this one is offered beside it.
  ReadRegStr $0 HKCR ".bpf" ""
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

Function un.RemoveEntries
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
FunctionEnd

Section Uninstall
  !insertmacro RefuseWhileRunning gorbexbuilder.exe
  !insertmacro RefuseWhileRunning gorbex.exe
  !insertmacro DeleteInstalled
  Delete "$INSTDIR\gorbexbuilder.build.lock"
  Delete "$INSTDIR\gorbexbuilder.change.lock"
  Delete "$INSTDIR\uninstall.exe"
  ; The entries may be those of another copy, which was installed later and elsewhere.
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    Call un.RemoveEntries
  ${EndIf}

  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
    "Delete your activity logs, the compiler's last log and your settings too?" /SD IDNO IDNO keep
  Delete "$INSTDIR\Logs\*.log"
  RMDir "$INSTDIR\Logs"
  Delete "$INSTDIR\VBResult.log"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
keep:
  RMDir "$INSTDIR"
SectionEnd
