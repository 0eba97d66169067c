@echo off
rem Removes the phone with its files, its registry key and this folder. --all: the recordings as well.
setlocal
set "HERE=%~dp0"
set "HERE=%HERE:~0,-1%"
set "ALL="
if "%~1" == "--all" set "ALL=--all"
"%HERE%\programs\handset.exe" uninstall %ALL%
if errorlevel 1 goto failed
echo Kora is removed.
if "%~1" == "" pause
rem Only our own files, should there be others in the folder. This file is open until it ends, so the folder goes a
rem moment later. One line, read as a whole before this file goes.
cd /d "%TEMP%"
rmdir /s /q "%HERE%\programs" & rmdir /s /q "%HERE%\documents" & start "" /min cmd /c "for /l %%i in (1,1,20) do if exist "%HERE%" (ping -n 2 127.0.0.1 >nul & rmdir "%HERE%" 2>nul)" & del /q "%HERE%\README.txt" "%HERE%\Start Kora.cmd" "%HERE%\Uninstall Kora.cmd" & exit

:failed
if "%~1" == "" pause
exit /b 1
