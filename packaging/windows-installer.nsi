; The Windows installer. `make installer` calls makensis with VERSION, EXECUTABLE (orvalis.exe), DOCS (a folder) and
; OUTPUT defined. "/S" installs and uninstalls silently, "/D=FOLDER" chooses the folder. Exit codes: 0 done, 1 cancelled,
; 2 not done, with the reason in a window unless it is silent.

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

!include "MUI2.nsh"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\orvalis.exe"
!define MUI_FINISHPAGE_RUN_NOTCHECKED
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
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

Section "Orvalis"
  SetRegView 64
  SetShellVarContext all
  !insertmacro FailWhileRunning
  SetOutPath "$INSTDIR"
  ClearErrors
  File "/oname=orvalis.exe" "${EXECUTABLE}"
  File "/oname=LICENSE.txt" "${LICENSE}"
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
  CreateShortcut "$SMPROGRAMS\Orvalis.lnk" "$INSTDIR\orvalis.exe"
  WriteRegStr HKLM "Software\Orvalis" "InstallDir" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "Orvalis"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\orvalis.exe"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
SectionEnd

; The settings and the logs of the weather are the user's, and stay. What the program writes beside itself for its own
; use goes, the script with the password above all.
Section "Uninstall"
  SetRegView 64
  SetShellVarContext all
  !insertmacro FailWhileRunning
  ExecWait '"$INSTDIR\orvalis.exe" /UnregServer' $0
  Delete "$INSTDIR\orvalis.exe"
  RMDir /r "$INSTDIR\docs"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\winscp.txt"
  Delete "$INSTDIR\screenshot.bmp"
  Delete "$INSTDIR\image.jpg"
  Delete "$INSTDIR\orvalis_errors*.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Orvalis.lnk"
  DeleteRegKey HKLM "${UNINSTALL}"
  DeleteRegValue HKLM "Software\Orvalis" "InstallDir"
  DeleteRegKey /ifempty HKLM "Software\Orvalis"
SectionEnd
