// ChildProcess.cpp - child processes of the tests, their output read through a pipe.
#include "support/ChildProcess.h"
#include "support/TempDir.h"

#include <string>

namespace qmtest {
namespace {

// Runs `command` to its end (two minutes at most); its exit code, or -1 when
// it could not start. With `output` its standard output and error are kept.
int Run(CString command, CString* output)
{
    SECURITY_ATTRIBUTES inherit = {sizeof(inherit), nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (output != nullptr && !CreatePipe(&readEnd, &writeEnd, &inherit, 0))
        return -1;
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = output != nullptr ? STARTF_USESTDHANDLES : 0;
    startup.hStdOutput = startup.hStdError = writeEnd;
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, output != nullptr, 0, nullptr,
                                       nullptr, &startup, &process);
    command.ReleaseBuffer();
    std::string bytes;
    char chunk[4096];
    DWORD read = 0, code = static_cast<DWORD>(-1);
    if (output != nullptr) {
        CloseHandle(writeEnd);
        while (started && ReadFile(readEnd, chunk, sizeof chunk, &read, nullptr) && read > 0)
            bytes.append(chunk, read);
        CloseHandle(readEnd);
        std::wstring text(static_cast<size_t>(bytes.size()), L'\0');
        text.resize(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()),
                                                            &text[0], static_cast<int>(text.size()))));
        *output = text.c_str();
    }
    if (!started)
        return -1;
    WaitForSingleObject(process.hProcess, 120000);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

CString ThisProgram()
{
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    return exe;
}

}  // namespace

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
    const CString exe = ThisProgram();
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
    SetEnvironmentVariableW(L"QMTEST_CHILD", marker);
    const int code = Run(L"\"" + program + L"\" --gtest_filter=" + CString(test), nullptr);
    SetEnvironmentVariableW(L"QMTEST_CHILD", nullptr);
    return code == 0 && !QM::IsExist(marker) ? -2 : code;
}

int RunQmtool(const CString& arguments, CString& output)
{
    return Run(L"\"" + QM::GetFilePath(ThisProgram()) + L"qmtool.exe\" " + arguments, &output);
}

}  // namespace qmtest
