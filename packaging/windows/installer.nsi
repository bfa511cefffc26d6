; The installer for Windows. scripts/windows/package passes VERSION, CONTENT (the folder of what is
; installed) and RESULT.
Target amd64-unicode
!include MUI2.nsh
!include x64.nsh

!define NAME "Fathomline"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define SETUP_TYPE "${NAME}.Setup"

Name "${NAME}"
OutFile "${RESULT}"
InstallDir "$PROGRAMFILES64\${NAME}"
InstallDirRegKey HKLM "Software\${NAME}" "Folder"
RequestExecutionLevel admin
ManifestDPIAware true
SetCompressor /SOLID lzma
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "FileDescription" "${NAME} installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Fathomline developers. GPL-3.0-or-later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\fathomline.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${CONTENT}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Function .onInit
  ${IfNot} ${RunningX64}
    MessageBox MB_ICONSTOP|MB_OK "${NAME} needs a 64-bit Windows." /SD IDOK
    Abort
  ${EndIf}
FunctionEnd

; Setup files end in ".ini", as those of many programs do: opening them with this program is offered,
; and what opens them else is left as it is.
Section "install"
  SetRegView 64
  SetShellVarContext all
  SetOutPath "$INSTDIR"
  File /r "${CONTENT}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\${NAME}"
  CreateShortCut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\fathomline.exe"
  CreateShortCut "$SMPROGRAMS\${NAME}\Read me.lnk" "$INSTDIR\README.txt"
  CreateShortCut "$SMPROGRAMS\${NAME}\Uninstall ${NAME}.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKLM "Software\Classes\${SETUP_TYPE}" "" "Fathomline setup"
  WriteRegStr HKLM "Software\Classes\${SETUP_TYPE}\DefaultIcon" "" "$INSTDIR\fathomline.exe,0"
  WriteRegStr HKLM "Software\Classes\${SETUP_TYPE}\shell\open\command" "" \
    '"$INSTDIR\fathomline.exe" "%1"'
  WriteRegStr HKLM "Software\Classes\.ini\OpenWithProgids" "${SETUP_TYPE}" ""
  System::Call 'shell32::SHChangeNotify(i 0x8000000, i 0, p 0, p 0)'

  WriteRegStr HKLM "Software\${NAME}" "Folder" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "${NAME}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\fathomline.exe,0"
  WriteRegStr HKLM "${UNINSTALL}" "Publisher" "The Fathomline developers"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
  SectionGetSize 0 $0
  WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; What the user has made with the program, setups, logs and reports, stays.
Section "uninstall"
  SetRegView 64
  SetShellVarContext all
  Delete "$SMPROGRAMS\${NAME}\*.lnk"
  RMDir "$SMPROGRAMS\${NAME}"
  DeleteRegKey HKLM "Software\Classes\${SETUP_TYPE}"
  DeleteRegValue HKLM "Software\Classes\.ini\OpenWithProgids" "${SETUP_TYPE}"
  DeleteRegKey HKLM "${UNINSTALL}"
  DeleteRegKey HKLM "Software\${NAME}"
  System::Call 'shell32::SHChangeNotify(i 0x8000000, i 0, p 0, p 0)'
  ; File by file, since the folder may have been one of the user's before.
  !include "${REMOVALS}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
SectionEnd
