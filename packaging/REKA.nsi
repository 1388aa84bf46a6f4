; SPDX-License-Identifier: MIT
; The installer for 64-bit Windows. It lays down both bit widths and registers each with the registrar of its width: for all
; users with the rights of an administrator, for this user alone without them or with the switch /CURRENTUSER. /S installs
; without a window, and /D=FOLDER, which has to come last, says where. Exit status: 0 done, 1 cancelled, 2 not installed or
; not registered. What can't be installed whole is taken away again; what can't be uninstalled whole stays in the list of
; installed programs.
;
; package.sh defines VERSION, OUTPUT, FILES (the list of files to lay down and to remove), INSTALLED_KB and SOURCE (the top
; of the source tree). TESTED_ACCOUNT is what a test wants an account without rights to be called. With SIGNER, a program that signs the file it is given, the uninstaller is signed.

Target amd64-unicode
Unicode true
!ifdef IS_QUICK ; for the tests, to which size means nothing
  SetCompress off
!else
  SetCompressor /SOLID lzma
!endif
AllowSkipFiles off
ManifestSupportedOS all
RequestExecutionLevel highest
Name "REKA ${VERSION}"
OutFile "${OUTPUT}"
BrandingText "REKA ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "REKA"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs REKA, CAPE-OPEN reaction packages"
VIAddVersionKey "LegalCopyright" "Copyright (c) 2026 The REKA developers"

!include "MUI2.nsh"
!include "LogicLib.nsh"
!include "FileFunc.nsh"
!include "nsDialogs.nsh"
!include "${FILES}"

!define UNINSTALL_LIST "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define UNINSTALL_KEY "${UNINSTALL_LIST}\REKA"
!define CLASSES "Software\Classes"
!define CLASS_KEY "${CLASSES}\CLSID\{95E42661-1916-4261-8FCC-6F598A19E544}"
!define PROG_ID "NAVO_REKA.ReactionPackManager.1"
!define VERSION_INDEPENDENT_PROG_ID "NAVO_REKA.ReactionPackManager"
!ifdef TESTED_ACCOUNT
  !define SILENT_IN_TESTS " /S"
!else
  !define SILENT_IN_TESTS ""
!endif
!define WRITE_AND_DELETE 0x40010000
!define SHARE_ALL 7
!define OPEN_EXISTING 3
!define FLAG_FOLDERS_TOO 0x02000000
!define MUI_ICON "${SOURCE}/src/editor/win/icons/Reka.ico"
!ifdef SIGNER
  !uninstfinalize '"${SIGNER}" "%1"' = 0
!endif
!define MUI_UNICON "${SOURCE}/src/editor/win/icons/Reka.ico"

Var isForUser        ; 1: for this user alone, 0: for all users
Var isAdministrator  ; 1: runs with the rights of an administrator
Var isOwnerGiven     ; 1: the command line says for whom
Var isFolderGiven    ; 1: the command line says where
Var firstFolder      ; the outermost folder that this installation makes; empty if even its own was there
Var isLayingDown     ; 1: files may be there that have to go if the rest can't come
Var objection        ; why the folder can't be installed into; empty if it can
Var isAsked          ; 1: somebody was asked for the rights of an administrator
Var leftThing        ; what could not be removed; empty if all could
Var logFile

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${SOURCE}/LICENSE"
Page custom ShowOwners KeepOwner
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveDirectory
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A line for the window and for install.log.
!macro Log text
  DetailPrint "${text}"
  FileWriteUTF16LE $logFile "${text}$\r$\n"
!macroend
!define Log "!insertmacro Log"

; Ends without having changed anything, with the reason.
!macro Refuse text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel 2
  Quit
!macroend
!define Refuse "!insertmacro Refuse"

!include "Registering.nsh"
!insertmacro RegisteringFunctions ""
!insertmacro RegisteringFunctions "un."

!macro FolderFunctions un

; $R9: a file of ours. One that a program has open can't be replaced and removed, which is seen before anything is changed.
Function ${un}RefuseFileInUse
  ${IfNot} ${FileExists} "$R9"
    Return
  ${EndIf}
  System::Call 'kernel32::CreateFileW(w R9, i ${WRITE_AND_DELETE}, i ${SHARE_ALL}, p 0, i ${OPEN_EXISTING}, \
      i ${FLAG_FOLDERS_TOO}, p 0) p .r0'
  ${If} $0 P= -1
    ${Refuse} "$R9 can't be replaced or removed. Close the program that uses it, such as a simulator."
  ${EndIf}
  System::Call 'kernel32::CloseHandle(p r0)'
FunctionEnd

; The folder without short names, as the list of installed programs has it; one that isn't there yet stays as it is.
Function ${un}LengthenFolder
  System::Call 'kernel32::GetLongPathNameW(w "$INSTDIR", w .r0, i ${NSIS_MAX_STRLEN}) i .r1'
  ${If} $1 <> 0
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd

; Removes the folders that an installation made, from the inside out, as long as nothing else is in them. $0: its own
; folder, $1: the outermost one.
Function ${un}RemoveFolders
  ${If} $1 == ""
    Return
  ${EndIf}
  ${DoWhile} $0 != ""
    RMDir "$0"
    ${If} $0 == $1
      ${Break}
    ${EndIf}
    ${GetParent} $0 $0
  ${Loop}
FunctionEnd

!macroend
!insertmacro FolderFunctions ""
!insertmacro FolderFunctions "un."

; ---- Installing

Function UseOwner
  ${If} $isForUser = 1
    SetShellVarContext current
  ${Else}
    SetShellVarContext all
  ${EndIf}
  ${If} $isFolderGiven = 1
    Return
  ${EndIf}
  ReadRegStr $INSTDIR SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $INSTDIR == ""
    ${If} $isForUser = 1
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\REKA"
    ${Else}
      StrCpy $INSTDIR "$PROGRAMFILES64\REKA"
    ${EndIf}
  ${EndIf}
FunctionEnd

Function .onInit
  SetRegView 64
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $isAdministrator 1
    StrCpy $isForUser 0
  ${Else}
    StrCpy $isAdministrator 0
    StrCpy $isForUser 1
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/CURRENTUSER" $1
  ${IfNot} ${Errors}
  ${AndIf} $1 == "" ; else it is the beginning of a longer word
    StrCpy $isForUser 1
    StrCpy $isOwnerGiven 1
  ${EndIf}
  ${If} $INSTDIR != ""
    StrCpy $isFolderGiven 1
  ${EndIf}
  Call UseOwner
FunctionEnd

Function ShowOwners
  ${If} $isAdministrator <> 1
  ${OrIf} $isOwnerGiven = 1
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "For whom" "Choose who can use REKA in a simulator."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 10u 100% 12u "For &all users of this machine"
  Pop $1
  ${NSD_CreateRadioButton} 0 28u 100% 12u "For this &user alone"
  Pop $2
  ${If} $isForUser = 1
    ${NSD_Check} $2
  ${Else}
    ${NSD_Check} $1
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function KeepOwner
  ${NSD_GetState} $2 $isForUser
  Call UseOwner
FunctionEnd

; $R9: a file that is to be laid down.
Function FindFileOfOthers
  ${If} ${FileExists} "$R9"
    StrCpy $objection "$R9 is there already, and is not of an installed REKA. Choose another folder."
  ${EndIf}
FunctionEnd

; One folder can't hold an installation for all users and one for this user. And of a file that was there before nobody
; would know whose it is when REKA is uninstalled; the user's other files don't matter.
Function FindObjection
  StrCpy $objection ""
  Call LengthenFolder
  ${If} $isForUser = 1
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    StrCpy $1 "for all users"
  ${Else}
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    StrCpy $1 "for this user alone"
  ${EndIf}
  ${If} $0 == $INSTDIR
    StrCpy $objection "REKA is installed in $INSTDIR $1. Uninstall it first, or choose another folder."
    Return
  ${EndIf}
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    Return
  ${EndIf}
  !insertmacro ForEachFile FindFileOfOthers
  StrCpy $R9 "$INSTDIR\install.log"
  Call FindFileOfOthers
  StrCpy $R9 "$INSTDIR\uninstall.exe"
  Call FindFileOfOthers
FunctionEnd

Function LeaveDirectory
  Call FindObjection
  ${If} $objection != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION "$objection"
    Abort
  ${EndIf}
FunctionEnd

; Of the folders down to the one to install into, finds the outermost that isn't there yet. One that an older
; installation made there is as good as new.
Function FindFirstFolder
  ${If} $firstFolder != ""
    Return
  ${EndIf}
  StrCpy $0 $INSTDIR
  ${DoWhile} $0 != ""
    ${If} ${FileExists} "$0\*.*"
      ${Break}
    ${EndIf}
    StrCpy $firstFolder $0
    ${GetParent} $0 $0
  ${Loop}
FunctionEnd

; An older installation goes before the new one comes, since it may have files that the new one hasn't.
Function RemoveOlder
  StrCpy $firstFolder ""
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ReadRegStr $1 SHCTX "${UNINSTALL_KEY}" "FirstFolder"
  ${If} $0 == ""
    Return
  ${EndIf}
  ${If} $0 == $INSTDIR
    StrCpy $firstFolder $1
  ${EndIf}
  ${IfNot} ${FileExists} "$0\uninstall.exe"
    Return
  ${EndIf}
  ClearErrors
  ExecWait '"$0\uninstall.exe" /S _?=$0' $2
  ${If} ${Errors}
  ${OrIf} $2 <> 0
    ${Refuse} "The REKA installed in $0 can't be removed. Close the program that uses it, such as a simulator."
  ${EndIf}
  Delete "$0\uninstall.exe" ; it couldn't remove itself
  ${If} $0 != $INSTDIR
    Call RemoveFolders
  ${EndIf}
FunctionEnd

Function ListAsInstalled
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "REKA"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "The REKA developers"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "FirstFolder" "$firstFolder"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${INSTALLED_KB}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
FunctionEnd

; What has been laid down when the rest could not be, as on a full disk, goes again.
Function .onInstFailed
  ${If} $isLayingDown = 1
    SetOutPath "$TEMP"
    !insertmacro RemoveFiles
    Delete "$INSTDIR\uninstall.exe"
    StrCpy $0 $INSTDIR
    StrCpy $1 $firstFolder
    Call RemoveFolders
  ${EndIf}
FunctionEnd

Section "Install"
  Call FindObjection
  ${If} $objection != ""
    ${Refuse} "$objection"
  ${EndIf}
  !insertmacro ForEachFile RefuseFileInUse
  Call RemoveOlder
  Call FindFirstFolder
  SetOverwrite on
  StrCpy $isLayingDown 1
  !insertmacro LayDownFiles ; ends the installation if a file can't be written
  SetOutPath "$INSTDIR"
  ClearErrors
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    Abort "$INSTDIR\uninstall.exe can't be written."
  ${EndIf}
  StrCpy $isLayingDown 0
  Call LengthenFolder
  Call ListAsInstalled
  FileOpen $logFile "$INSTDIR\install.log" w
  FileWriteUTF16LE /BOM $logFile ""
  ${If} $isForUser = 1
    ${Log} "REKA ${VERSION} in $INSTDIR for this user alone"
  ${Else}
    ${Log} "REKA ${VERSION} in $INSTDIR for all users"
  ${EndIf}
  Call RegisterBoth
  FileClose $logFile
  ${If} $isRegistrationWrong = 1
    MessageBox MB_OK|MB_ICONEXCLAMATION "REKA is installed, but could not be registered. $INSTDIR\install.log has the \
        details, and $INSTDIR\x64\rekadoctor.exe tells what to do." /SD IDOK
    SetErrorLevel 2
  ${EndIf}
SectionEnd

; ---- Uninstalling

; Who runs this, or in a test whoever it says, as long as nobody was asked for rights.
Function un.ReadAccount
  UserInfo::GetAccountType
  Pop $0
!ifdef TESTED_ACCOUNT
  ${If} $isAsked <> 1
    StrCpy $0 "${TESTED_ACCOUNT}"
  ${EndIf}
!endif
FunctionEnd

; Asks for the rights of an administrator, and leaves the rest to the uninstaller that has them. Comes back only if there are
; none.
Function un.AskForRights
  ${If} $isAsked = 1
  ${OrIf} ${Silent}
    Return
  ${EndIf}
  ClearErrors
  ExecShellWait "runas" "$INSTDIR\uninstall.exe" "/ASKED${SILENT_IN_TESTS}"
  ${IfNot} ${Errors}
    SetErrorLevel 0
    Quit
  ${EndIf}
FunctionEnd

; Any folder may hold a copy of the uninstaller, and files of the names that it removes.
Function un.onInit
  SetRegView 64
  Call un.LengthenFolder
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    StrCpy $isForUser 1
    SetShellVarContext current
    Return
  ${EndIf}
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != $INSTDIR
    ${Refuse} "REKA is not installed in $INSTDIR, so there is nothing to uninstall."
  ${EndIf}
  StrCpy $isForUser 0
  SetShellVarContext all
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/ASKED" $1
  ${IfNot} ${Errors}
    StrCpy $isAsked 1
  ${EndIf}
  Call un.ReadAccount
  ${If} $0 != "Admin"
    Call un.AskForRights
    ${Refuse} "REKA was installed for all users, so an administrator has to uninstall it."
  ${EndIf}
FunctionEnd

; $R9: a file that should be gone.
Function un.NoteLeftFile
  ${If} ${FileExists} "$R9"
    StrCpy $leftThing $R9
  ${EndIf}
FunctionEnd

Section "Uninstall"
  !insertmacro ForEachFile un.RefuseFileInUse
  StrCpy $leftThing ""
  Call un.UnregisterBoth
  SetOutPath "$TEMP" ; a folder that is somebody's current one can't be removed
  !insertmacro RemoveFiles
  !insertmacro ForEachFile un.NoteLeftFile
  ${If} $leftThing != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION "$leftThing could not be removed. Remove it, and uninstall REKA again." /SD IDOK
    Abort "$leftThing could not be removed."
  ${EndIf}
  ReadRegStr $firstFolder SHCTX "${UNINSTALL_KEY}" "FirstFolder"
  Delete "$INSTDIR\install.log"
  Delete "$INSTDIR\uninstall.exe"
  StrCpy $0 $INSTDIR
  StrCpy $1 $firstFolder
  Call un.RemoveFolders
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ${If} $isForUser = 1
    DeleteRegKey /ifempty HKCU "${UNINSTALL_LIST}" ; not every user has one
  ${EndIf}
SectionEnd
