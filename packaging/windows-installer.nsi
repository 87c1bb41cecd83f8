; The Windows installer. `make installer` calls makensis with VERSION, EXECUTABLE (orvalis.exe), DOCS (the folder of the
; guide), LICENSE and OUTPUT defined. "/S" installs and uninstalls silently, "/D=FOLDER" chooses the folder, "/FIREWALL"
; lets other machines through the firewall, "/LOGON" starts the program at logon, "/PURGE" lets the uninstaller remove what
; is the user's too. Exit codes: 0 done, 1 cancelled, 2 not done, with the reason in a window unless it is silent.
;
; Clients find one program. Installed into a second folder, it is that one; when the second is removed, it is the first
; again, if that is still there.

Target amd64-unicode
Name "Orvalis"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\Orvalis"
InstallDirRegKey HKLM "Software\Orvalis" "InstallDir"
RequestExecutionLevel admin
SetCompressor /SOLID lzma
ManifestDPIAware true
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Orvalis"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Orvalis"
VIAddVersionKey "LegalCopyright" "GPL-3.0-or-later"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvalis"

!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"

!include "MUI2.nsh"
!include "FileFunc.nsh"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\orvalis.exe"
!define MUI_FINISHPAGE_RUN_NOTCHECKED
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!macro Fail text
  MessageBox MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel 2
  Quit
!macroend

; A program that runs can be neither replaced nor removed, and killing it might leave a roof open.
!macro FailWhileRunning
  IfFileExists "$INSTDIR\orvalis.exe" 0 ends
    ClearErrors
    FileOpen $1 "$INSTDIR\orvalis.exe" a
    IfErrors 0 closes
      !insertmacro Fail "Orvalis is running. End it, and the programs that use it, and try again."
  closes:
    FileClose $1
  ends:
!macroend

; What the system knows of the program in `folder`, besides what the program registers itself.
!macro MakeKnown folder version
  CreateShortcut "$SMPROGRAMS\Orvalis.lnk" "${folder}\orvalis.exe"
  WriteRegStr HKLM "Software\Orvalis" "InstallDir" "${folder}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "Orvalis"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${version}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "${folder}\orvalis.exe"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "${folder}"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"${folder}\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"${folder}\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
!macroend

!macro RemoveLogs folder
  Delete "${folder}\Orvalis.txt*"
  Delete "${folder}\orvalis_single.txt"
!macroend

; What the program writes for its own use, the script with the password above all.
!macro RemoveOwnFiles folder
  Delete "${folder}\winscp.txt"
  Delete "${folder}\screenshot.bmp"
  Delete "${folder}\image.jpg"
  Delete "${folder}\orvalis_errors*.txt*"
!macroend

; The exit code in $0.
!macro FirewallRule command
  nsExec::Exec '"$SYSDIR\netsh.exe" advfirewall firewall ${command}'
  Pop $0
!macroend
!macro RemoveFirewallRule
  !insertmacro FirewallRule 'delete rule name="Orvalis" program="$INSTDIR\orvalis.exe"'
!macroend

Section "Orvalis"
  SectionIn RO
  SetRegView 64
  SetShellVarContext all
  !insertmacro FailWhileRunning
  SetOutPath "$INSTDIR"
  ClearErrors
  File "/oname=orvalis.exe" "${EXECUTABLE}"
  File "/oname=LICENSE.txt" "${LICENSE}"
  RMDir /r "$INSTDIR\docs"
  ClearErrors
  SetOutPath "$INSTDIR\docs"
  File /r "${DOCS}\*.*"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  IfErrors 0 copied
    !insertmacro Fail "Not all files could be written to $INSTDIR."
  copied:
  ExecWait '"$INSTDIR\orvalis.exe" /RegServer' $0
  StrCmp $0 "0" registered
    !insertmacro Fail "Orvalis was copied, but other programs cannot be made to find it."
  registered:
  ReadRegStr $2 HKLM "Software\Orvalis" "InstallDir"
  StrCmp $2 "$INSTDIR" only
  IfFileExists "$2\orvalis.exe" 0 only
    WriteRegStr HKLM "Software\Orvalis" "Former" "$2"
  only:
  !insertmacro MakeKnown "$INSTDIR" "${VERSION}"
SectionEnd

; The program still answers this machine alone until its settings open it. Public networks stay shut.
Section /o "Firewall rule" firewall
  !insertmacro RemoveFirewallRule
  !insertmacro FirewallRule 'add rule name="Orvalis" dir=in action=allow program="$INSTDIR\orvalis.exe" profile=private,domain'
  StrCmp $0 "0" allowed
    MessageBox MB_ICONEXCLAMATION "Orvalis is installed, but the firewall could not be told to let other machines read it." /SD IDOK
  allowed:
SectionEnd

; For every user of the machine. Windows starts it again after a crash, which the program asks for itself.
Section /o "Start at logon" logon
  SetRegView 64
  WriteRegStr HKLM "${RUN}" "Orvalis" '"$INSTDIR\orvalis.exe"'
SectionEnd

LangString logon_text ${LANG_ENGLISH} "The panel opens when somebody logs on to this machine."
LangString firewall_text ${LANG_ENGLISH} "A rule of the Windows firewall for private networks: other machines reach the \
Alpaca devices and the page, once the program's settings open them to the network."
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${firewall} $(firewall_text)
  !insertmacro MUI_DESCRIPTION_TEXT ${logon} $(logon_text)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/FIREWALL" $1
  IfErrors shut
    SectionSetFlags ${firewall} 1
  shut:
  ClearErrors
  ${GetOptions} $0 "/LOGON" $1
  IfErrors by_hand
    SectionSetFlags ${logon} 1
  by_hand:
FunctionEnd

Section "un.Orvalis"
  SectionIn RO
  SetRegView 64
  SetShellVarContext all
  !insertmacro FailWhileRunning
  ExecWait '"$INSTDIR\orvalis.exe" /UnregServer' $0
  !insertmacro RemoveFirewallRule
  ReadRegStr $2 HKLM "${RUN}" "Orvalis"
  StrCmp $2 '"$INSTDIR\orvalis.exe"' 0 +2
    DeleteRegValue HKLM "${RUN}" "Orvalis"
  Delete "$INSTDIR\orvalis.exe"
  RMDir /r "$INSTDIR\docs"
  Delete "$INSTDIR\LICENSE.txt"
  !insertmacro RemoveOwnFiles "$INSTDIR"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"

  ReadRegStr $2 HKLM "Software\Orvalis" "InstallDir"
  ReadRegStr $3 HKLM "Software\Orvalis" "Former"
  DeleteRegValue HKLM "Software\Orvalis" "Former"
  StrCmp $2 "$INSTDIR" known
  IfFileExists "$2\orvalis.exe" done  ; the system knows another one, which stays
  known:
  Delete "$SMPROGRAMS\Orvalis.lnk"
  DeleteRegKey HKLM "${UNINSTALL}"
  DeleteRegValue HKLM "Software\Orvalis" "InstallDir"
  DeleteRegKey /ifempty HKLM "Software\Orvalis"
  IfFileExists "$3\orvalis.exe" 0 done
    ExecWait '"$3\orvalis.exe" /RegServer' $0
    ${GetFileVersion} "$3\orvalis.exe" $4
    !insertmacro MakeKnown "$3" "$4"
  done:
SectionEnd

; Of the user who removes it; others keep theirs.
Section /o "un.My settings, logs, history and stored password" own_data
  SetRegView 64
  SetShellVarContext current
  ReadRegStr $2 HKCU "Software\Orvalis\Orvalis.Weather" "g_sFullLogPath"
  ReadRegStr $3 HKCU "Software\Orvalis\Orvalis.Weather" "g_sOneLineLogPath"
  StrCmp $2 "" +2
    Delete "$2\Orvalis.txt*"
  StrCmp $3 "" +2
    Delete "$3\orvalis_single.txt"
  !insertmacro RemoveLogs "$INSTDIR"
  RMDir "$INSTDIR"
  !insertmacro RemoveLogs "$LOCALAPPDATA\orvalis"
  !insertmacro RemoveOwnFiles "$LOCALAPPDATA\orvalis"
  Delete "$LOCALAPPDATA\orvalis\history*.sqlite*"
  RMDir "$LOCALAPPDATA\orvalis"
  DeleteRegKey HKCU "Software\Orvalis"
SectionEnd

LangString own_data_text ${LANG_ENGLISH} "The settings in the registry with the password of the weather service, the two logs, \
the history and the error log of the user who removes the program. What stands in a folder named by --profile stays, as \
does what the driver platform keeps."
!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${own_data} $(own_data_text)
!insertmacro MUI_UNFUNCTION_DESCRIPTION_END

Function un.onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/PURGE" $1
  IfErrors keep
    SectionSetFlags ${own_data} 1
  keep:
FunctionEnd
