// ChildProcess.cpp - a test of this executable in a fresh process.
#include "support/ChildProcess.h"

namespace qmtest {

bool IsChildProcess()
{
    wchar_t value[8] = {};
    return GetEnvironmentVariableW(L"QMTEST_CHILD", value, ARRAYSIZE(value)) > 0 && value[0] == L'1';
}

namespace {

CString MarkerPath()
{
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    CString path;
    path.Format(L"%sqmtest-child-%lu.done", temp, GetCurrentProcessId());
    return path;
}

}  // namespace

void ChildReached()
{
    wchar_t marker[MAX_PATH] = {};
    GetEnvironmentVariableW(L"QMTEST_CHILD_MARKER", marker, MAX_PATH);
    HANDLE file = CreateFileW(marker, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
}

int RunInChild(const char* test)
{
    const CString marker = MarkerPath();
    DeleteFileW(marker);
    SetEnvironmentVariableW(L"QMTEST_CHILD_MARKER", marker);
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    CString command;
    command.Format(L"\"%s\" --gtest_filter=%s", exe, CString(test).GetString());
    SetEnvironmentVariableW(L"QMTEST_CHILD", L"1");
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                       &startup, &process);
    command.ReleaseBuffer();
    SetEnvironmentVariableW(L"QMTEST_CHILD", nullptr);
    SetEnvironmentVariableW(L"QMTEST_CHILD_MARKER", nullptr);
    if (!started)
        return -1;
    WaitForSingleObject(process.hProcess, 120000);
    DWORD code = static_cast<DWORD>(-1);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    const bool reached = DeleteFileW(marker) != FALSE;
    return code == 0 && !reached ? -2 : static_cast<int>(code);
}

}  // namespace qmtest
