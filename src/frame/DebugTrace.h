// DebugTrace.h - trace output to an external trace viewer, debug message
// boxes, system error texts, and the seven debug switches.
//
//   SetDSCommandLineToEXE(true);          // for this process only
//   DebugPrintf(L"layer %s: %d\n", name, count);
//   DebugMsgBox(L"x = %f", x);            // "塔维调试信息" box
//
// The switches live in section "Debug" of the start-up settings and are read
// once, at their first use; only DialogToEXE is on by default. Setting one
// changes the process's copy, never the file.
//
// Trace text goes, as ANSI text of the thread's code page, in a WM_COPYDATA
// packet tagged 0x6E697774 to the top-level window of class
// "TraceWin TRACE Window", or else "MfxTraceWindow"; with neither open, or
// with CommandLineToEXE off, nothing is sent.
//
// Every function formats into one shared buffer of 40960 characters (longer
// text is cut there): call them from the user-interface thread only.
#pragma once
#include "QMExport.h"

QM_API bool GetDSMacroToEXE();
QM_API bool GetDSMacroToCAD();
QM_API bool GetDSDialogToEXE();
QM_API bool GetDSDialogToCAD();
QM_API bool GetDSCommandLineToEXE();
QM_API bool GetDSCommandLineToCAD();
QM_API bool GetDSFormatLspList();

// Each set lasts for the process. A set made before the switch was first
// read is lost: that first read takes the file's value.
QM_API void SetDSMacroToEXE(bool on);
QM_API void SetDSMacroToCAD(bool on);
QM_API void SetDSDialogToEXE(bool on);
QM_API void SetDSDialogToCAD(bool on);
QM_API void SetDSCommandLineToEXE(bool on);
QM_API void SetDSCommandLineToCAD(bool on);
QM_API void SetDSFormatLspList(bool on);

// Sends the formatted text to the trace viewer when CommandLineToEXE is on.
QM_API void DebugPrintf(const wchar_t* format, ...);
QM_API void DebugPrintf(int value);       // "%d\n"
QM_API void DebugPrintf(double value);    // "%f\n"

// Shows the formatted text in an OK box captioned "塔维调试信息", then traces
// it when DialogToEXE is on.
QM_API void DebugMsgBox(const wchar_t* format, ...);
QM_API void DebugMsgBox(int value);       // "%d"
QM_API void DebugMsgBox(double value);    // "%f"

// Traces the formatted text first when MacroToEXE is on, then shows it as
// DebugMsgBox does.
QM_API void DebugVCMacroPrintf(const wchar_t* format, ...);

// Puts the system text of error `code` (GetLastError() when negative),
// followed by "\n", into the shared buffer; shows nothing and ignores
// `owner`.
QM_API void ShowLastErrorMessage(int code, HWND owner);
// As ShowLastErrorMessage, then shows the system text in an information box
// captioned "调试信息.GetLastError" owned by `owner`.
QM_API void ShowLastErrorMessageBox(int code, HWND owner);
