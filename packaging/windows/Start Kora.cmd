@echo off
rem Sets the phone up, which takes a moment the first time, and opens it with the radio on.
setlocal
set "HANDSET=%~dp0programs\handset.exe"
if not exist "%HANDSET%" (
    echo Unpack the whole zip first: the folder "programs" is missing beside this file.
    goto failed
)
"%HANDSET%" install > "%TEMP%\kora-start.log" 2>&1
if errorlevel 1 (
    type "%TEMP%\kora-start.log"
    goto failed
)
del "%TEMP%\kora-start.log"
"%HANDSET%" favourites > nul
if errorlevel 1 goto failed
start "Kora" /min "%HANDSET%" panel --with-radio
exit /b 0

:failed
if not "%~1" == "--no-pause" pause
exit /b 1
