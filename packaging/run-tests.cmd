@echo off
rem Runs the tests of REKA on this Windows and writes results\report.txt beside this file. README.txt has the rest.
setlocal
set "width=x64"
if /i "%PROCESSOR_ARCHITECTURE%"=="x86" if not defined PROCESSOR_ARCHITEW6432 set "width=x86"
set "status=2"
if not exist "%~dp0%width%\reka_test_report.exe" (
    echo The tests can't be run here: the folder %width% isn't there. Unpack the whole zip.
    goto end
)
"%~dp0%width%\reka_test_report.exe" %*
set "status=%ERRORLEVEL%"
:end
rem A double click has a window of its own, started with the whole path of this file, which closes behind the last line.
if not defined CMDCMDLINE goto done
set "line=%CMDCMDLINE:"=%"
set "self=%~f0"
setlocal EnableDelayedExpansion
for /f "delims=" %%f in ("!self!") do if not "!line:%%f=!"=="!line!" pause
:done
exit /b %status%
