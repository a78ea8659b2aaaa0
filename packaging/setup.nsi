; The setup program and the uninstaller.
;
;   pelvaro-setup.exe [/S] [/CurrentUser | /AllUsers] [/D=FOLDER]    /D is the last one and takes no quotes
;   uninstall.exe     [/S] [/PURGE]                                  /PURGE: the own operator list and the settings too
;
; Without words: for the current user, who needs no rights for it and may write into the program's folder, where the own
; operator list is saved. /S asks nothing. Exit codes: 0 done, 1 cancelled, 2 failed, 5 an administrator is needed,
; 32 the program runs. The uninstaller goes on in a copy of itself and returns at once; with _?=FOLDER as its last word
; it does not, and leaves itself behind.

Unicode true
SetCompressor /SOLID lzma
SetDateSave off ; the files' dates would be different in every build

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WinMessages.nsh

!define PROGRAM "Pelvaro"
!define MAIN_CLASS "Pelvaro.Form1"
!define OWN_LIST "Default2.DAT"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"
!define SETTINGS_KEY "Software\${PROGRAM}"
!define ERROR_NO_RIGHTS 5
!define ERROR_RUNS 32

Name "${PROGRAM}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${PROGRAM}" ; its last part is added to a folder that is browsed to
BrandingText "${PROGRAM} ${VERSION}"
RequestExecutionLevel user ; an administrator is asked for only where all users are chosen
ManifestDPIAware true
ManifestSupportedOS all
ShowInstDetails nevershow
ShowUninstDetails nevershow
AllowSkipFiles off

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey CompanyName "${PUBLISHER}"
VIAddVersionKey FileDescription "${PROGRAM} Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "${COPYRIGHT}"
VIAddVersionKey OriginalFilename "pelvaro-setup.exe"
VIAddVersionKey ProductName "${PROGRAM}"
VIAddVersionKey ProductVersion "${VERSION}"

Var Mode          ; user, all
Var GivenFolder   ; of the command line
Var EarlierFolder ; of an earlier version that this one replaces
Var Administrator ; yes, or empty
Var Purge         ; yes, or empty
Var Choice
Var Box

; ---- Pages

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${PICTURES}/head.bmp"
!define MUI_HEADERIMAGE_UNBITMAP "${PICTURES}/head.bmp"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURES}/side.bmp"
!define MUI_ABORTWARNING

Page custom showMode leaveMode
!define MUI_PAGE_CUSTOMFUNCTION_PRE skipFolder
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE closeProgram
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "${PROGRAM} ${VERSION} is installed"
!define MUI_FINISHPAGE_TEXT "You find it in the Start menu.$\r$\n$\r$\nTo go online, connect your phone by cable or Bluetooth, start ${PROGRAM} and add a connection for your operator."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start ${PROGRAM} now"
!define MUI_FINISHPAGE_RUN_FUNCTION startProgram
!insertmacro MUI_PAGE_FINISH

UninstPage custom un.showConfirm un.leaveConfirm
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE English

; ---- For whom

Function forUser
  StrCpy $Mode user
  SetShellVarContext current
  StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PROGRAM}"
  ReadRegStr $EarlierFolder HKCU "${UNINSTALL_KEY}" InstallLocation
  Call chooseFolder
FunctionEnd

Function forAll
  StrCpy $Mode all
  SetShellVarContext all
  StrCpy $INSTDIR "$PROGRAMFILES\${PROGRAM}"
  ReadRegStr $EarlierFolder HKLM "${UNINSTALL_KEY}" InstallLocation
  Call chooseFolder
FunctionEnd

Function chooseFolder
  ${If} $EarlierFolder != ""
    StrCpy $INSTDIR $EarlierFolder
  ${EndIf}
  ${If} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${EndIf}
FunctionEnd

!macro FIND_RIGHTS
  UserInfo::GetAccountType
  Pop $0
  StrCpy $Administrator ""
  ${If} $0 == Admin
    StrCpy $Administrator yes
  ${EndIf}
!macroend

Function .onInit
  ${If} $INSTDIR != "$LOCALAPPDATA\Programs\${PROGRAM}"
    StrCpy $GivenFolder $INSTDIR
  ${EndIf}
  !insertmacro FIND_RIGHTS
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 == ""
  ${AndIf} $1 != ""
    Call forAll
  ${Else}
    Call forUser
  ${EndIf}
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/CurrentUser" $3
  ${IfNot} ${Errors}
    Call forUser
  ${EndIf}
  ClearErrors
  ${GetOptions} $2 "/AllUsers" $3
  ${IfNot} ${Errors}
    Call forAll
  ${EndIf}
  ${If} ${Silent}
    ${If} $Mode == all
    ${AndIf} $Administrator == ""
      SetErrorLevel ${ERROR_NO_RIGHTS}
      Quit
    ${EndIf}
    Call closeProgram
  ${EndIf}
FunctionEnd

Function showMode
  !insertmacro MUI_HEADER_TEXT "Install ${PROGRAM} ${VERSION}" "${DESCRIPTION}."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 20u "For whom shall ${PROGRAM} be installed on this computer?"
  Pop $0
  ${NSD_CreateRadioButton} 0 22u 100% 12u "Just for &me"
  Pop $Choice
  ${NSD_CreateLabel} 12u 34u 95% 18u "No administrator is needed."
  Pop $0
  ${NSD_CreateRadioButton} 0 56u 100% 12u "For &all users"
  Pop $1
  ${NSD_CreateLabel} 12u 68u 95% 28u "An administrator has to agree. An operator list of one's own can then be saved by administrators only, because it is kept in the program's folder."
  Pop $0
  ReadRegStr $2 HKCU "${UNINSTALL_KEY}" DisplayVersion
  ${If} $2 == ""
    ReadRegStr $2 HKLM "${UNINSTALL_KEY}" DisplayVersion
  ${EndIf}
  ${If} $2 != ""
    ${NSD_CreateLabel} 0 106u 100% 28u "${PROGRAM} $2 is installed and will be replaced where it is. Your settings and your own operator list stay."
    Pop $0
  ${EndIf}
  ${If} $Mode == all
    ${NSD_Check} $1
    ${NSD_SetFocus} $1
  ${Else}
    ${NSD_Check} $Choice
    ${NSD_SetFocus} $Choice
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function leaveMode
  ${NSD_GetState} $Choice $0
  ${If} $0 == ${BST_CHECKED}
    ${If} $Mode != user
      Call forUser
    ${EndIf}
    Return
  ${EndIf}
  ${If} $Administrator == ""
    ClearErrors
    ExecShell runas "$EXEPATH" "/AllUsers"
    ${If} ${Errors} ; nobody agreed
      Abort
    ${EndIf}
    Quit
  ${EndIf}
  ${If} $Mode != all
    Call forAll
  ${EndIf}
FunctionEnd

Function skipFolder
  ${If} $EarlierFolder != ""
  ${AndIf} $GivenFolder == ""
    Call closeProgram
    Abort
  ${EndIf}
FunctionEnd

; ---- The running program

; Does the program of this folder run, whoever started it? A running one cannot be written to. Answers in $0.
!macro PROGRAM_RUNS un
Function ${un}programRuns
  StrCpy $0 ""
  ${If} ${FileExists} "$INSTDIR\pelvaro.exe"
    ClearErrors
    FileOpen $1 "$INSTDIR\pelvaro.exe" a
    ${If} ${Errors}
      StrCpy $0 yes
    ${Else}
      FileClose $1
    ${EndIf}
  ${EndIf}
FunctionEnd

; Returns when the program does not run. It is closed only when the user says so.
Function ${un}closeProgram
  Call ${un}programRuns
  ${While} $0 != ""
    ${If} ${Silent}
      SetErrorLevel ${ERROR_RUNS}
      Quit
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_OKCANCEL|MB_ICONEXCLAMATION "${PROGRAM} is running. It has to be closed first; what it has connected stays connected.$\r$\n$\r$\nPress OK to close it." IDCANCEL`
      Quit
    ${EndIf}
    FindWindow $1 "${MAIN_CLASS}"
    ${If} $1 <> 0
      SendMessage $1 ${WM_CLOSE} 0 0 /TIMEOUT=3000
    ${EndIf}
    ${For} $2 1 30
      Call ${un}programRuns
      ${If} $0 == ""
        Return
      ${EndIf}
      Sleep 100
    ${Next}
  ${EndWhile}
FunctionEnd
!macroend
!insertmacro PROGRAM_RUNS ""
!insertmacro PROGRAM_RUNS "un."

; ---- Installing

Section "${PROGRAM}" main
  SetOutPath "$INSTDIR"
  File "${DIST}/pelvaro.exe"
  File "${DIST}/Default.DAT"
  File "${DIST}/loading.avi"
  File "${DIST}/manual.html"
  File "${PICTURES}/Licence.txt"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\${PROGRAM}.lnk" "$INSTDIR\pelvaro.exe" "" "" 0 SW_SHOWNORMAL "" "${DESCRIPTION}"

  SectionGetSize ${main} $0 ; KB
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "${PROGRAM}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "${PUBLISHER}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\pelvaro.exe,0"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

; Never with the rights of the administrator who agreed to the setup: the desktop starts it.
Function startProgram
  ${If} $Mode == all
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\pelvaro.exe"'
  ${Else}
    Exec '"$INSTDIR\pelvaro.exe"'
  ${EndIf}
FunctionEnd

; ---- Uninstalling

Function un.onInit
  !insertmacro FIND_RIGHTS
  StrCpy $Mode user
  SetShellVarContext current
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" InstallLocation
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $0 != $INSTDIR
  ${AndIf} $1 == $INSTDIR
    StrCpy $Mode all
    SetShellVarContext all
    ${If} $Administrator == ""
      ${If} ${Silent}
        SetErrorLevel ${ERROR_NO_RIGHTS}
      ${Else}
        ExecShell runas "$INSTDIR\uninstall.exe"
      ${EndIf}
      Quit
    ${EndIf}
  ${EndIf}
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/PURGE" $3
  ${IfNot} ${Errors}
    StrCpy $Purge yes
  ${EndIf}
  ${If} ${Silent}
    Call un.closeProgram
  ${EndIf}
FunctionEnd

Function un.showConfirm
  !insertmacro MUI_HEADER_TEXT "Remove ${PROGRAM} ${VERSION}" "Your dial-up connections stay in the system's phonebook."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 30u "${PROGRAM} will be removed from$\r$\n$INSTDIR"
  Pop $0
  ${NSD_CreateCheckBox} 0 40u 100% 12u "Also delete my own &operator list (${OWN_LIST}) and my settings"
  Pop $Box
  ${If} $Purge == yes
    ${NSD_Check} $Box
  ${EndIf}
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:$(^UninstallBtn)"
  nsDialogs::Show
FunctionEnd

Function un.leaveConfirm
  ${NSD_GetState} $Box $0
  StrCpy $Purge ""
  ${If} $0 == ${BST_CHECKED}
    StrCpy $Purge yes
  ${EndIf}
  Call un.closeProgram
FunctionEnd

Section Uninstall
  Delete "$INSTDIR\pelvaro.exe"
  Delete "$INSTDIR\Default.DAT"
  Delete "$INSTDIR\loading.avi"
  Delete "$INSTDIR\manual.html"
  Delete "$INSTDIR\Licence.txt"
  ${If} $Purge == yes
    Delete "$INSTDIR\${OWN_LIST}"
    DeleteRegKey HKCU "${SETTINGS_KEY}"
  ${EndIf}
  Delete "$SMPROGRAMS\${PROGRAM}.lnk"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR" ; if nothing of the user's is in it
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
