; The setup program of Velora. script/package gives:
;   VERSION    "10.0.0"            OUTPUT   the setup program to write
;   FILES      a generated file with the macros PROGRAM_FILES, COMPANIONS (what to do with each)
;   ICON       the program's icon  KILOBYTES  size of what is installed
Unicode true
ManifestDPIAware false
ManifestSupportedOS all
RequestExecutionLevel admin    ; the companion files go to the Windows system folder
SetCompressor /SOLID lzma
SetDateSave off                ; a file's time is the time of its installation; see Companions.nsh

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define NAME "Velora"
!define PUBLISHER "Orv Software"
!define SETUP_KEY "Software\Orv Software\Velora Setup"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Velora"
!define APP_PATHS_KEY "Software\Microsoft\Windows\CurrentVersion\App Paths\velora.exe"
!define FILE_TYPE "Velora.InstallScheme"

Name "${NAME}"
OutFile "${OUTPUT}"
; A folder with this name counts as the present program, another one as an older installation.
InstallDir "$PROGRAMFILES32\Velora 10"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${NAME} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "${PUBLISHER}"
VIAddVersionKey "FileDescription" "${NAME} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "OriginalFilename" "velora-setup.exe"

!include "${FILES}"
!include "Companions.nsh"
!include "Rights.nsh"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "Setup will install ${NAME} ${VERSION}, the companion of the AOL software, \
on this computer.$\r$\n$\r$\nSettings, logs and sounds lists of an earlier installation stay as they \
are.$\r$\n$\r$\nClick Next to continue."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start ${NAME} now"
!define MUI_FINISHPAGE_RUN_FUNCTION startProgram
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Leaves when the program in folder $INSTDIR runs: a running program's file cannot be opened for writing.
!macro REFUSE_WHILE_RUNNING
  ${If} ${FileExists} "$INSTDIR\velora.exe"
    ${Do}
      ClearErrors
      FileOpen $0 "$INSTDIR\velora.exe" a
      ${IfNot} ${Errors}
        FileClose $0
        ${Break}
      ${EndIf}
      ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${NAME} is running, or its folder \
may not be written to.$\r$\n$\r$\nPlease close ${NAME} and try again." /SD IDCANCEL IDCANCEL`
        SetErrorLevel 2
        Quit
      ${EndIf}
    ${Loop}
  ${EndIf}
!macroend

Function .onInit
  SetShellVarContext all
FunctionEnd

; The setup program runs with an administrator's rights; Velora must run as the user who is at the screen,
; whose settings it reads. The shell starts it as that user.
Function startProgram
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\velora.exe"'
FunctionEnd

Section "Velora"
  !insertmacro REFUSE_WHILE_RUNNING
  SetOutPath "$INSTDIR"
  !insertmacro PROGRAM_FILES
  WriteUninstaller "$INSTDIR\uninstall.exe"

  !insertmacro COMPANIONS InstallCompanion

  ; Logs and data live below the program folder, so that its users must be able to write there; what they
  ; run from it they may only read, or one user could give the others a program of his own.
  !insertmacro LET_USERS_WRITE "$INSTDIR"
  !insertmacro LET_USERS_READ_ONLY "$INSTDIR\velora.exe"
  !insertmacro LET_USERS_READ_ONLY "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\Velora"
  CreateShortCut "$SMPROGRAMS\Velora\Velora.lnk" "$INSTDIR\velora.exe" "" "" "" SW_SHOWNORMAL "" \
    "The companion of the AOL software"
  CreateShortCut "$SMPROGRAMS\Velora\Choose another AOL folder.lnk" "$INSTDIR\velora.exe" "CHANGEAOL"
  CreateShortCut "$SMPROGRAMS\Velora\Uninstall Velora.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKLM "${APP_PATHS_KEY}" "" "$INSTDIR\velora.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" '"$INSTDIR\velora.exe",0'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; The file type is written by the program at each start, for all users or, where it may not, for its own.
!macro REMOVE_FILE_TYPE root
  ReadRegStr $0 ${root} "Software\Classes\.fde" ""
  ${If} $0 == "${FILE_TYPE}"
    DeleteRegKey ${root} "Software\Classes\.fde"
  ${EndIf}
  DeleteRegKey ${root} "Software\Classes\${FILE_TYPE}"
!macroend

Function un.onInit
  SetShellVarContext all
FunctionEnd

Section "Uninstall"
  !insertmacro REFUSE_WHILE_RUNNING

  StrCpy $1 keep
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Do you also want to delete your logs, sound lists, \
messages and settings?$\r$\n$\r$\nChoose No to keep them for a later installation." /SD IDNO IDNO +2
    StrCpy $1 delete

  !insertmacro COMPANIONS RemoveCompanion
  !insertmacro REMOVE_PROGRAM_FILES
  Delete "$INSTDIR\uninstall.exe"
  ${If} $1 == delete
    Call un.deleteData
  ${EndIf}
  ; Only when empty: whatever else is in there is not ours.
  RMDir "$INSTDIR"

  Delete "$SMPROGRAMS\Velora\Velora.lnk"
  Delete "$SMPROGRAMS\Velora\Choose another AOL folder.lnk"
  Delete "$SMPROGRAMS\Velora\Uninstall Velora.lnk"
  RMDir "$SMPROGRAMS\Velora"

  !insertmacro REMOVE_FILE_TYPE HKLM
  !insertmacro REMOVE_FILE_TYPE HKCU
  DeleteRegKey HKLM "${APP_PATHS_KEY}"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  DeleteRegKey HKLM "${SETUP_KEY}"
  DeleteRegKey /ifempty HKLM "Software\Orv Software"
SectionEnd

; The folders that the program makes below its own, by name: never the whole folder, which the user may
; share with something else.
Function un.deleteData
  RMDir /r "$INSTDIR\data"
  RMDir /r "$INSTDIR\im logs"
  RMDir /r "$INSTDIR\chat logs"
  RMDir /r "$INSTDIR\incoming"
  RMDir /r "$INSTDIR\outgoing"
  RMDir /r "$INSTDIR\styles"
  Delete "$INSTDIR\favwavs.dat*"
  Delete "$INSTDIR\velora.log*"
  Delete "$INSTDIR\velora-crash.txt"
  ; Where the error log goes when the program folder may not be written to.
  SetShellVarContext current
  Delete "$APPDATA\Velora\velora.log*"
  RMDir "$APPDATA\Velora"
  SetShellVarContext all
  DeleteRegKey HKCU "Software\Orv Software\Velora"
  DeleteRegKey HKCU "Software\Orv Software\Notes"
  DeleteRegKey /ifempty HKCU "Software\Orv Software"
FunctionEnd
