@echo off
rem Runs the tests of REKA on this Windows and writes results\report.txt beside this file. README.txt has the rest.
setlocal
set "width=x64"
if /i "%PROCESSOR_ARCHITECTURE%"=="x86" if not defined PROCESSOR_ARCHITEW6432 set "width=x86"
"%~dp0%width%\reka_test_report.exe" %*
exit /b %ERRORLEVEL%
