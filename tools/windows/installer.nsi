; The Windows installer, made by tools/windows/package with makensis. Defined by it: VERSION, STAGE (the folder with what is
; installed), OUTPUT, and LISTS, a folder with two scripts: what the uninstaller deletes, file by file and folder by folder,
; so that it never takes a file along that somebody else put there. /S installs and removes without a window. Of 64 bits like
; the programs, so that a Windows on which they can't run refuses it too.
Target amd64-unicode
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tallyscope"
Name "Tallyscope"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\Tallyscope"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
RequestExecutionLevel admin
ManifestDPIAware true
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tallyscope"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Tallyscope"
VIAddVersionKey "LegalCopyright" "The Tallyscope developers"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\tallyscope.exe"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "Spanish"
!insertmacro MUI_LANGUAGE "Japanese"
!insertmacro MUI_LANGUAGE "SimpChinese"

Function .onInit
  SetRegView 64
FunctionEnd

Function un.onInit
  SetRegView 64
FunctionEnd

Section
  ; An older version goes first, with the files that it alone had.
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "QuietUninstallString"
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$1\uninstall.exe"
    ExecWait '"$1\uninstall.exe" /S _?=$1'
  ${EndIf}

  SetOutPath "$INSTDIR"
  File /r "${STAGE}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  SetShellVarContext all
  CreateShortcut "$SMPROGRAMS\Tallyscope.lnk" "$INSTDIR\tallyscope.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "Tallyscope"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\tallyscope.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "The Tallyscope developers"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  !include "${LISTS}/files.nsh"
  Delete "$INSTDIR\uninstall.exe"
  !include "${LISTS}/folders.nsh"
  RMDir "$INSTDIR"
  SetShellVarContext all
  Delete "$SMPROGRAMS\Tallyscope.lnk"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
