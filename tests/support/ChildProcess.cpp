// ChildProcess.cpp - a test of this executable in a fresh process.
#include "support/ChildProcess.h"
#include "support/TempDir.h"

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

// A copy of this executable and its library beside the given start-up file.
CString CopyBeside(const TempDir& dir, const char* startupIni)
{
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    wchar_t library[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(L"QMUtil.dll"), library, MAX_PATH);
    const CString copy = dir.Path() + QM::GetFileName(exe);
    CopyFileW(exe, copy, FALSE);
    CopyFileW(library, dir.Path() + L"QMUtil.dll", FALSE);
    dir.WriteFile(L"INIT.ini", startupIni);
    return copy;
}

int RunInChild(const char* test, const char* startupIni)
{
    const CString marker = MarkerPath();
    DeleteFileW(marker);
    SetEnvironmentVariableW(L"QMTEST_CHILD_MARKER", marker);
    TempDir folder;
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    if (startupIni != nullptr)
        lstrcpynW(exe, CopyBeside(folder, startupIni), MAX_PATH);
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
