// ChildProcess.cpp - a test of this executable in a fresh process.
#include "support/ChildProcess.h"
#include "support/TempDir.h"

namespace qmtest {

// Only a child has QMTEST_CHILD: the marker file it creates when it gets through.
bool IsChildProcess() { return GetEnvironmentVariableW(L"QMTEST_CHILD", nullptr, 0) > 0; }

void ChildReached()
{
    wchar_t marker[MAX_PATH] = {};
    GetEnvironmentVariableW(L"QMTEST_CHILD", marker, MAX_PATH);
    CloseHandle(CreateFileW(marker, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

int RunInChild(const char* test, const char* startupIni)
{
    TempDir folder;
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    CString program(exe);
    if (startupIni != nullptr) {
        wchar_t library[MAX_PATH] = {};
        GetModuleFileNameW(GetModuleHandleW(L"QMUtil.dll"), library, MAX_PATH);
        program = folder.Path() + QM::GetFileName(exe);
        CopyFileW(exe, program, FALSE);
        CopyFileW(library, folder.Path() + L"QMUtil.dll", FALSE);
        folder.WriteFile(L"INIT.ini", startupIni);
    }
    const CString marker = folder.Path() + L"reached";
    CString command;
    command.Format(L"\"%s\" --gtest_filter=%s", program.GetString(), CString(test).GetString());
    SetEnvironmentVariableW(L"QMTEST_CHILD", marker);
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                       &startup, &process);
    command.ReleaseBuffer();
    SetEnvironmentVariableW(L"QMTEST_CHILD", nullptr);
    if (!started)
        return -1;
    WaitForSingleObject(process.hProcess, 120000);
    DWORD code = static_cast<DWORD>(-1);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code == 0 && !QM::IsExist(marker) ? -2 : static_cast<int>(code);
}

}  // namespace qmtest
