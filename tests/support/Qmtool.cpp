// Qmtool.cpp - qmtool in a child process, its output read through a pipe.
#include "support/Qmtool.h"

#include <string>

namespace qmtest {

int RunQmtool(const CString& arguments, CString& output)
{
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    CString command = L"\"" + QM::GetFilePath(exe) + L"qmtool.exe\" " + arguments;
    SECURITY_ATTRIBUTES inherit = {sizeof(inherit), nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inherit, 0))
        return -1;
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writeEnd;
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                       &startup, &process);
    command.ReleaseBuffer();
    CloseHandle(writeEnd);
    std::string bytes;
    char chunk[4096];
    DWORD read = 0;
    while (started && ReadFile(readEnd, chunk, sizeof chunk, &read, nullptr) && read > 0)
        bytes.append(chunk, read);
    CloseHandle(readEnd);
    if (!started)
        return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = static_cast<DWORD>(-1);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    const int length = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
    std::wstring text(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), &text[0], length);
    output = text.c_str();
    return static_cast<int>(code);
}

}  // namespace qmtest
