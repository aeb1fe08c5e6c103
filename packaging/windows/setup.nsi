; The installer: for one user, without administrator rights. Silent with /S, into another folder with /D=FOLDER (last,
; unquoted); Uninstall.exe /S takes the program away again.
;
; VERSION, PROGRAM (the program folder), OUTPUT and LISTS (made by the build: what is installed and what is removed)
; come from the command line.

Unicode true
Target amd64-unicode
ManifestDPIAware true
ManifestSupportedOS Win10
SetCompressor /SOLID lzma

!include MUI2.nsh
!include FileFunc.nsh
!include WinVer.nsh

!define TITLE "清单库编辑器"
!define LIBRARY "Tessel.Library"
!define CLASSES "Software\Classes"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tessel"

Name "${TITLE}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Tessel"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
BrandingText "${TITLE} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=2052 "ProductName" "${TITLE}"
VIAddVersionKey /LANG=2052 "FileDescription" "${TITLE}安装程序"
VIAddVersionKey /LANG=2052 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=2052 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=2052 "LegalCopyright" ""

!define MUI_ICON "${PROGRAM}\Res\Icons\Tessel.ico"
!define MUI_UNICON "${PROGRAM}\Res\Icons\Tessel.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\tessel.exe"
!define MUI_FINISHPAGE_RUN_TEXT "运行${TITLE}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "SimpChinese"

; A program that is running cannot be replaced or removed. Without a user to ask, the installer ends with code 2.
!macro WaitUntilClosed un
Function ${un}waitUntilClosed
    again:
    ClearErrors
    IfFileExists "$INSTDIR\tessel.exe" 0 closed
    FileOpen $0 "$INSTDIR\tessel.exe" a
    IfErrors 0 open
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${TITLE}正在运行，请先关闭它，然后重试。" /SD IDCANCEL IDRETRY again
    SetErrorLevel 2
    Quit
    open:
    FileClose $0
    closed:
FunctionEnd
!macroend
!insertmacro WaitUntilClosed ""
!insertmacro WaitUntilClosed "un."

!macro TellExplorer
    ; SHCNE_ASSOCCHANGED
    System::Call "shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)"
!macroend

Function .onInit
    ${IfNot} ${AtLeastWin10}
        MessageBox MB_OK|MB_ICONSTOP "${TITLE}需要 Windows 10 或更新的 64 位系统。" /SD IDOK
        SetErrorLevel 3
        Quit
    ${EndIf}
FunctionEnd

Section
    Call waitUntilClosed
    SetOverwrite on
    !include "${LISTS}\install.nsh"
    ; What the user works with stays as it is when it is there already.
    SetOverwrite off
    !include "${LISTS}\install-data.nsh"

    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortcut "$SMPROGRAMS\${TITLE}.lnk" "$INSTDIR\tessel.exe"

    WriteRegStr HKCU "${CLASSES}\.bdb" "" "${LIBRARY}"
    WriteRegStr HKCU "${CLASSES}\${LIBRARY}" "" "清单库"
    WriteRegStr HKCU "${CLASSES}\${LIBRARY}\DefaultIcon" "" "$INSTDIR\tessel.exe,0"
    ; The whole rest of the line is one path: no quotes around it.
    WriteRegStr HKCU "${CLASSES}\${LIBRARY}\shell\open\command" "" '"$INSTDIR\tessel.exe" %1'
    !insertmacro TellExplorer

    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "${TITLE}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\tessel.exe,0"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; Libraries, tessel.dat, ration libraries and the error log stay.
Section "Uninstall"
    Call un.waitUntilClosed
    !include "${LISTS}\uninstall.nsh"
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\${TITLE}.lnk"
    ReadRegStr $0 HKCU "${CLASSES}\.bdb" ""
    ${If} $0 == "${LIBRARY}"
        DeleteRegValue HKCU "${CLASSES}\.bdb" ""
        DeleteRegKey /ifempty HKCU "${CLASSES}\.bdb"
    ${EndIf}
    DeleteRegKey HKCU "${CLASSES}\${LIBRARY}"
    !insertmacro TellExplorer
    DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
