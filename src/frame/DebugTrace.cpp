// DebugTrace.cpp - trace packets, debug boxes and the debug switches.
#include "frame/DebugTrace.h"
#include "config/INISetting.h"
#include "platform/CString.h"

#include <cstdarg>
#include <cwchar>
#include <vector>

namespace {

const int kTraceChars = 40960;
const ULONG_PTR kTraceTag = 0x6E697774;  // "twin" in memory
const wchar_t kDebugCaption[] = L"塔维调试信息";

// The one buffer every formatting function of the trace family writes into.
wchar_t* TraceBuffer()
{
    static wchar_t buffer[kTraceChars];
    return buffer;
}

void FormatTrace(const wchar_t* format, va_list args)
{
    wchar_t* buffer = TraceBuffer();
    if (format == nullptr) {
        buffer[0] = L'\0';
        return;
    }
    _vsnwprintf(buffer, kTraceChars - 1, format, args);
    buffer[kTraceChars - 1] = L'\0';
}

struct DebugSwitch
{
    const wchar_t* key;
    const wchar_t* defaultText;
    bool read;
    bool on;
};

enum SwitchId { kMacroToEXE, kMacroToCAD, kDialogToEXE, kDialogToCAD, kCommandLineToEXE, kCommandLineToCAD,
                kFormatLspList, kSwitchCount };

DebugSwitch& Switch(SwitchId id)
{
    static DebugSwitch switches[kSwitchCount] = {
        {L"MacroToEXE", L"0", false, false},       {L"MacroToCAD", L"0", false, false},
        {L"DialogToEXE", L"1", false, false},      {L"DialogToCAD", L"0", false, false},
        {L"CommandLineToEXE", L"0", false, false}, {L"CommandLineToCAD", L"0", false, false},
        {L"FormatLspList", L"0", false, false},
    };
    return switches[id];
}

CString LookUp(const wchar_t* key, const wchar_t* defaultText)
{
    return QM::CInitSetting().GetSetting(key, defaultText, L"Debug");
}

bool GetSwitch(SwitchId id)
{
    DebugSwitch& s = Switch(id);
    if (!s.read) {
        s.on = _wtoi(LookUp(s.key, s.defaultText)) != 0;
        s.read = true;
    }
    return s.on;
}

// The set changes the process's copy only. The look-up that follows is kept
// for its own sake (its result is not used); it never writes the file.
void SetSwitch(SwitchId id, bool on)
{
    DebugSwitch& s = Switch(id);
    s.on = on;
    LookUp(s.key, on ? L"1" : L"0");
}

HWND FindTraceViewer()
{
    HWND viewer = FindWindowW(L"TraceWin TRACE Window", nullptr);
    return viewer != nullptr ? viewer : FindWindowW(L"MfxTraceWindow", nullptr);
}

void SendTrace(const wchar_t* text)
{
    HWND viewer = FindTraceViewer();
    if (viewer == nullptr)
        return;
    const int bytes = WideCharToMultiByte(CP_THREAD_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (bytes <= 0)
        return;
    std::vector<char> ansi(static_cast<size_t>(bytes));
    WideCharToMultiByte(CP_THREAD_ACP, 0, text, -1, ansi.data(), bytes, nullptr, nullptr);
    COPYDATASTRUCT packet{kTraceTag, static_cast<DWORD>(bytes - 1), ansi.data()};
    SendMessageW(viewer, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&packet));
}

// Shows the shared buffer's text, then traces it when DialogToEXE is on.
void ShowDebugBox()
{
    const CString text(TraceBuffer());
    MessageBoxW(nullptr, text, kDebugCaption, MB_OK);
    if (GetDSDialogToEXE())
        DebugPrintf(L"%s", text.GetString());
}

// The system text of `code`, allocated by the system; the caller frees it.
wchar_t* SystemErrorText(int code)
{
    const DWORD error = code < 0 ? GetLastError() : static_cast<DWORD>(code);
    wchar_t* text = nullptr;
    FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                   nullptr, error, 0x400, reinterpret_cast<LPWSTR>(&text), 0, nullptr);
    return text;
}

void CopyErrorToBuffer(const wchar_t* text)
{
    wchar_t* buffer = TraceBuffer();
    lstrcpynW(buffer, text != nullptr ? text : L"", kTraceChars - 1);
    const size_t length = std::wcslen(buffer);
    buffer[length] = L'\n';
    buffer[length + 1] = L'\0';
}

}  // namespace

bool GetDSMacroToEXE() { return GetSwitch(kMacroToEXE); }
bool GetDSMacroToCAD() { return GetSwitch(kMacroToCAD); }
bool GetDSDialogToEXE() { return GetSwitch(kDialogToEXE); }
bool GetDSDialogToCAD() { return GetSwitch(kDialogToCAD); }
bool GetDSCommandLineToEXE() { return GetSwitch(kCommandLineToEXE); }
bool GetDSCommandLineToCAD() { return GetSwitch(kCommandLineToCAD); }
bool GetDSFormatLspList() { return GetSwitch(kFormatLspList); }

void SetDSMacroToEXE(bool on) { SetSwitch(kMacroToEXE, on); }
void SetDSMacroToCAD(bool on) { SetSwitch(kMacroToCAD, on); }
void SetDSDialogToEXE(bool on) { SetSwitch(kDialogToEXE, on); }
void SetDSDialogToCAD(bool on) { SetSwitch(kDialogToCAD, on); }
void SetDSCommandLineToEXE(bool on) { SetSwitch(kCommandLineToEXE, on); }
void SetDSCommandLineToCAD(bool on) { SetSwitch(kCommandLineToCAD, on); }
void SetDSFormatLspList(bool on) { SetSwitch(kFormatLspList, on); }

void DebugPrintf(const wchar_t* format, ...)
{
    if (!GetDSCommandLineToEXE())
        return;
    va_list args;
    va_start(args, format);
    FormatTrace(format, args);
    va_end(args);
    SendTrace(TraceBuffer());
}

void DebugPrintf(int value) { DebugPrintf(L"%d\n", value); }
void DebugPrintf(double value) { DebugPrintf(L"%f\n", value); }

void DebugMsgBox(const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatTrace(format, args);
    va_end(args);
    ShowDebugBox();
}

void DebugMsgBox(int value) { DebugMsgBox(L"%d", value); }
void DebugMsgBox(double value) { DebugMsgBox(L"%f", value); }

void DebugVCMacroPrintf(const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatTrace(format, args);
    va_end(args);
    const CString text(TraceBuffer());
    if (GetDSMacroToEXE())
        DebugPrintf(L"%s", text.GetString());
    // Tracing reused the shared buffer; the box shows the caller's text.
    lstrcpynW(TraceBuffer(), text, kTraceChars);
    ShowDebugBox();
}

void ShowLastErrorMessage(int code, HWND /*owner*/)
{
    wchar_t* text = SystemErrorText(code);
    CopyErrorToBuffer(text);
    LocalFree(text);
}

void ShowLastErrorMessageBox(int code, HWND owner)
{
    wchar_t* text = SystemErrorText(code);
    CopyErrorToBuffer(text);
    MessageBoxW(owner, text != nullptr ? text : L"", L"调试信息.GetLastError", MB_ICONINFORMATION);
    LocalFree(text);
}
