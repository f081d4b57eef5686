@echo off
rem Says which of the programs that Pavoline calls are there, in which version, and what is impossible
rem without each. Changes nothing. Run it in the pre-installation environment, where it lies: beside
rem Pavoline.exe. Exit code: 0 an installation is possible, 1 it is not, 2 it is in part.
setlocal
set "app=%~dp0"
set "sys=%windir%\System32"
set "told=%windir%\temp\pavoline-check.txt"
set "result=0"
set "arch=x86"
if /i "%PROCESSOR_ARCHITECTURE%"=="AMD64" set "arch=x64"
if exist "%windir%\SysWOW64" set "arch=x64"

for /f "delims=" %%V in ('ver') do echo System:   %%V
echo Programs: %arch%; those without a version below are the system's own
echo test 2>nul >"%told%"
if exist "%sys%\reg.exe" reg query HKLM\System\CurrentControlSet\Control /v PEFirmwareType >"%told%" 2>nul
set "firmware="
if exist "%told%" for /f "usebackq tokens=1,3" %%A in ("%told%") do if "%%A"=="PEFirmwareType" set "firmware=%%B"
if "%firmware%"=="0x1" echo Firmware: BIOS
if "%firmware%"=="0x2" echo Firmware: UEFI

echo.
echo Without these nothing can be installed:
set "version="
set "tool=%told%"
call :need "folder for temporary files" "%windir%\temp cannot be written"
set "tool=%app%Pavoline.exe"
call :need "Pavoline" "run check.cmd in the folder of the program"
set "tool=%app%Bin\CxDir\%arch%\CxDir.exe"
if not exist "%tool%" goto cxdir
"%tool%" >"%told%" 2>nul
if not "%errorlevel%"=="0" call :fails "CxDir" "it does not run here. Is this the package for %arch%?"
if not "%errorlevel%"=="0" goto imaging
:cxdir
call :need "CxDir" "no partition can be listed. Is this the package for %arch%?"
:imaging
set "tool=%app%Bin\wimlib-imagex\%arch%\wimlib-imagex.exe"
if not exist "%tool%" goto wimlib
"%tool%" --version >"%told%" 2>nul
if not "%errorlevel%"=="0" call :fails "wimlib-imagex" "it does not run here. Is its DLL beside it, and both for %arch%?"
if not "%errorlevel%"=="0" goto usual
call :take wimlib-imagex
:wimlib
call :need "wimlib-imagex" "no image can be read or written"

:usual
echo.
echo For a usual installation:
set "version="
set "tool=%sys%\format.com"
call :want "format" "install partitions cannot be formatted"
call :boot bcdboot "no boot files are written: the new system does not start"
call :boot bootsect "no boot sector is written: BIOS machines do not start"

echo.
echo For single steps:
set "tool=%sys%\dism.exe"
if exist "%tool%" "%tool%" /? >"%told%" 2>nul
if exist "%tool%" call :take Version:
call :may "dism" "no drivers can be added"
set "version="
set "tool=%sys%\shutdown.exe"
if not exist "%tool%" set "tool=%sys%\wpeutil.exe"
call :may "shutdown or wpeutil" "the machine has to be restarted by hand"
set "tool=%sys%\diskpart.exe"
call :may "diskpart" "no virtual disks, no scripts for empty disks"
set "tool=%sys%\notepad.exe"
call :may "notepad" "no texts can be shown"
set "tool=%sys%\takeown.exe"
call :may "takeown" "apply mode Wimboot:WIMCOPY may fail"
set "tool=%sys%\cacls.exe"
call :may "cacls" "apply mode Wimboot:WIMCOPY may fail"
set "tool=%sys%\imdisk.exe"
if not exist "%sys%\drivers\imdisk.sys" set "tool=%app%Bin\imdisk\imdisk.inf"
if not exist "%tool%" set "tool=%app%Bin\imdisk\imdisk.inf"
set "version=not told"
call :may "ImDisk" "no ISO files; copy the image out of the ISO instead"
set "tool=%app%Bin\Ghost\%arch%\ghost.exe"
call :may "Ghost" "no images with the ending .gho"

echo.
if "%result%"=="0" echo An installation is possible.
if "%result%"=="1" echo NO INSTALLATION IS POSSIBLE; see above what is missing.
if "%result%"=="2" echo An installation is possible in part only; see above what is missing.
if exist "%told%" del "%told%"
exit /b %result%

rem need, want, may NAME LACK: says whether the file "tool" is there. Paths are not handed on by
rem call, which would read them a second time.
:need
call :may %1 %2
if not exist "%tool%" set "result=1"
exit /b 0

:want
call :may %1 %2
if not exist "%tool%" if "%result%"=="0" set "result=2"
exit /b 0

:may
set "line=  there    %~1"
if defined version set "line=%line%, version %version%"
if not exist "%tool%" set "line=  MISSING  %~1: %~2"
echo %line%
exit /b 0

rem boot NAME LACK: the program's own before the system's.
:boot
set "tool=%app%Bin\Boot\%arch%\%1.exe"
set "version="
if exist "%tool%" set "version=not told, of Bin\Boot"
if not exist "%tool%" set "tool=%sys%\%1.exe"
call :want "%1" %2
set "version="
exit /b 0

:fails
echo   FAILS    %~1: %~2
set "result=1"
exit /b 1

rem take WORD: the word behind this one, where it begins a line of what a program has told.
:take
set "version=not told"
for /f "usebackq tokens=1,2" %%A in ("%told%") do if "%%A"=="%1" set "version=%%B"
exit /b 0
