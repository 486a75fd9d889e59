; Files in the Windows system folder, which belongs to everybody. One that is there and was not installed
; by us stays as it is, at installation and at removal. What we installed is remembered with the file's
; time, so that a file that somebody replaced since counts as theirs.

; $R0 = "high:low" of the time of the file, or "" when there is none
!macro COMPANION_TIME name
  StrCpy $R0 ""
  ${If} ${FileExists} "$SYSDIR\${name}"
    ClearErrors
    GetFileTime "$SYSDIR\${name}" $R1 $R2
    ${IfNot} ${Errors}
      StrCpy $R0 "$R1:$R2"
    ${EndIf}
  ${EndIf}
!macroend

!macro InstallCompanion name
  !insertmacro COMPANION_TIME "${name}"
  ReadRegStr $R3 HKLM "${SETUP_KEY}" "${name}"
  ${If} $R0 == ""
  ${OrIf} $R0 == $R3
    ; The module in AOL stays loaded until AOL ends: then its file can be moved aside, not written.
    ${If} $R0 != ""
      Delete "$SYSDIR\${name}.old"
      Rename "$SYSDIR\${name}" "$SYSDIR\${name}.old"
      Delete /REBOOTOK "$SYSDIR\${name}.old"
    ${EndIf}
    SetOutPath "$SYSDIR"
    File "${BIN}/${name}"
    !insertmacro COMPANION_TIME "${name}"
    WriteRegStr HKLM "${SETUP_KEY}" "${name}" "$R0"
    DetailPrint "Companion file installed: ${name}"
  ${Else}
    DetailPrint "Companion file already there: ${name}"
  ${EndIf}
!macroend

!macro RemoveCompanion name
  !insertmacro COMPANION_TIME "${name}"
  ReadRegStr $R3 HKLM "${SETUP_KEY}" "${name}"
  ; A program that came later and uses the same file has counted itself here.
  ReadRegDWORD $R4 HKLM "Software\Microsoft\Windows\CurrentVersion\SharedDLLs" "$SYSDIR\${name}"
  ${If} $R0 != ""
  ${AndIf} $R0 == $R3
    ${If} $R4 == ""
    ${OrIf} $R4 = 0
      Delete /REBOOTOK "$SYSDIR\${name}"
    ${EndIf}
  ${EndIf}
!macroend
