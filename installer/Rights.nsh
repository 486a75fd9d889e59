; Access rights by security descriptor strings, which need no group name in the system's language.
; The macros give nothing back: on a file system without rights (FAT) there is nothing to set.

; path, descriptor, flags: 4 = the access list, with 0x20000000 = inherited entries stay as well,
; with 0x80000000 = inherited entries go
!macro SET_RIGHTS path descriptor flags
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${descriptor}", i 1, *p .R1, p 0) i .R0'
  ${If} $R0 <> 0
    System::Call 'advapi32::GetSecurityDescriptorDacl(p R1, *i .R2, *p .R3, *i .R4) i .R0'
    ${If} $R0 <> 0
      System::Call 'advapi32::SetNamedSecurityInfoW(w "${path}", i 1, i ${flags}, p 0, p 0, p R3, p 0) i .R0'
    ${EndIf}
    System::Call 'kernel32::LocalFree(p R1)'
  ${EndIf}
!macroend

; Users (BU) may read, write, run and delete in the folder and below.
!macro LET_USERS_WRITE folder
  !insertmacro SET_RIGHTS "${folder}" "D:(A;OICI;0x1301bf;;;BU)" 0x20000004
!macroend

; Administrators and the system everything, users read and run.
!macro LET_USERS_READ_ONLY file
  !insertmacro SET_RIGHTS "${file}" "D:P(A;;FA;;;BA)(A;;FA;;;SY)(A;;0x1200a9;;;BU)" 0x80000004
!macroend
