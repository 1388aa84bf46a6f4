; Registering and unregistering both modules, for all users or for this one. Where the registration goes is said by the
; value CurrentUser of HKCU\Software\NAVO, which the module reads. It is set for the time of registering only, and then put
; back just as it was found, whatever its type.

Var isSettingKeyThere
Var settingType  ; empty: there is no value
Var settingData  ; the address of its bytes
Var settingSize
Var isRegistrationWrong

!define SETTING_KEY "Software\NAVO"
!define SETTING "CurrentUser"
!define HKEY_CURRENT_USER 0x80000001
!define KEY_READ 0x20019
!define KEY_WRITE 0x20006

!macro RegisteringFunctions un

Function ${un}RememberSetting
  StrCpy $isSettingKeyThere 0
  StrCpy $settingType ""
  System::Call 'advapi32::RegOpenKeyExW(p ${HKEY_CURRENT_USER}, w "${SETTING_KEY}", i 0, i ${KEY_READ}, *p .r0) i .r1'
  ${If} $1 <> 0
    Return
  ${EndIf}
  StrCpy $isSettingKeyThere 1
  System::Call 'advapi32::RegQueryValueExW(p r0, w "${SETTING}", p 0, *i .r2, p 0, *i .r3) i .r1'
  ${If} $1 = 0
    StrCpy $settingType $2
    StrCpy $settingSize $3
    IntOp $3 $3 + 8 ; never nothing
    System::Alloc $3
    Pop $settingData
    System::Call 'advapi32::RegQueryValueExW(p r0, w "${SETTING}", p 0, p 0, p $settingData, *i r3) i .r1'
  ${EndIf}
  System::Call 'advapi32::RegCloseKey(p r0)'
FunctionEnd

Function ${un}SendRegistration
  ${If} $isForUser = 1
    WriteRegStr HKCU "${SETTING_KEY}" "${SETTING}" "1"
  ${ElseIf} $settingType != ""
    DeleteRegValue HKCU "${SETTING_KEY}" "${SETTING}"
  ${EndIf}
FunctionEnd

Function ${un}RestoreSetting
  ${If} $settingType == ""
    DeleteRegValue HKCU "${SETTING_KEY}" "${SETTING}"
    ${If} $isSettingKeyThere = 0
      DeleteRegKey /ifempty HKCU "${SETTING_KEY}"
    ${EndIf}
    Return
  ${EndIf}
  System::Call 'advapi32::RegOpenKeyExW(p ${HKEY_CURRENT_USER}, w "${SETTING_KEY}", i 0, i ${KEY_WRITE}, *p .r0) i .r1'
  ${If} $1 = 0
    System::Call 'advapi32::RegSetValueExW(p r0, w "${SETTING}", i 0, i $settingType, p $settingData, i $settingSize)'
    System::Call 'advapi32::RegCloseKey(p r0)'
  ${EndIf}
  System::Free $settingData
FunctionEnd

; $R0: the registrar, $R1: the module, $R2: "/u" or nothing. $R3: 0 if all went well.
Function ${un}RunRegistrar
  ClearErrors
  ExecWait '"$R0" /s $R2 "$R1"' $R3
  ${If} ${Errors}
    StrCpy $R3 -1
  ${EndIf}
FunctionEnd

!macroend

; ---- Installing

Function RegisterOne
  Call RunRegistrar
  ${If} $R3 = 0
    ${Log} "$R1: registered with $R0"
  ${Else}
    ${Log} "$R1: NOT registered; $R0 ended with $R3"
    StrCpy $isRegistrationWrong 1
  ${EndIf}
FunctionEnd

Function RegisterBoth
  StrCpy $isRegistrationWrong 0
  Call RememberSetting
  Call SendRegistration
  StrCpy $R2 ""
  StrCpy $R0 "$SYSDIR\regsvr32.exe" ; this installer is a 64-bit program: no redirection
  StrCpy $R1 "$INSTDIR\x64\REKA.dll"
  Call RegisterOne
  StrCpy $R0 "$WINDIR\SysWOW64\regsvr32.exe"
  StrCpy $R1 "$INSTDIR\x86\REKA.dll"
  ${If} ${FileExists} "$R0"
    Call RegisterOne
  ${Else}
    ${Log} "$R1: not registered, since this Windows has no 32-bit side"
  ${EndIf}
  Call RestoreSetting
FunctionEnd

; ---- Uninstalling

; What a damaged module can't remove itself, for the width whose half of the registry is in view.
Function un.RemoveKeys
  DeleteRegKey SHCTX "${CLASS_KEY}"
  DeleteRegKey SHCTX "${CLASSES}\${PROG_ID}"
  DeleteRegKey SHCTX "${CLASSES}\${VERSION_INDEPENDENT_PROG_ID}"
FunctionEnd

; What was registered from elsewhere since then is left alone.
Function un.UnregisterOne
  ReadRegStr $0 SHCTX "${CLASS_KEY}\InprocServer32" ""
  ${If} $0 != $R1
    Return
  ${EndIf}
  Call un.RunRegistrar
  DetailPrint "$R1: unregistering ended with $R3"
  ${If} $R3 <> 0
    Call un.RemoveKeys
  ${EndIf}
  ReadRegStr $0 SHCTX "${CLASS_KEY}\InprocServer32" ""
  ${If} $0 == $R1
    StrCpy $leftThing "The registration of $R1"
  ${EndIf}
FunctionEnd

Function un.UnregisterBoth
  Call un.RememberSetting
  Call un.SendRegistration
  StrCpy $R2 "/u"
  SetRegView 32
  StrCpy $R0 "$WINDIR\SysWOW64\regsvr32.exe"
  StrCpy $R1 "$INSTDIR\x86\REKA.dll"
  Call un.UnregisterOne
  SetRegView 64
  StrCpy $R0 "$SYSDIR\regsvr32.exe"
  StrCpy $R1 "$INSTDIR\x64\REKA.dll"
  Call un.UnregisterOne
  Call un.RestoreSetting
FunctionEnd
