// ScratchDrive.cpp - drive letters through Wine's mount manager.
#include "support/ScratchDrive.h"

#include <winioctl.h>
#include <ddk/mountmgr.h>

#include <string>
#include <vector>

namespace qmtest {
namespace {

// winecfg's request to the mount manager: this header, then the Unix folder, NUL-terminated.
struct UnixDrive
{
    ULONG size, type, fsType;
    DWORD serial;
    ULONGLONG unixDevice;
    WCHAR letter;
    USHORT mountPointOffset, deviceOffset, labelOffset;
};
const DWORD kDefineUnixDrive = CTL_CODE(MOUNTMGRCONTROLTYPE, 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

// Maps `letter` to `unixFolder`, or removes it when `unixFolder` is null.
bool DefineDrive(wchar_t letter, const char* unixFolder)
{
    HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (manager == INVALID_HANDLE_VALUE)
        return false;
    const std::string folder = unixFolder != nullptr ? unixFolder : "";
    std::vector<char> request(sizeof(UnixDrive) + folder.size() + 1);
    UnixDrive& drive = *reinterpret_cast<UnixDrive*>(request.data());
    drive.size = static_cast<ULONG>(request.size());
    drive.type = unixFolder != nullptr ? DRIVE_FIXED : DRIVE_NO_ROOT_DIR;
    drive.letter = static_cast<WCHAR>(towlower(letter));
    if (unixFolder != nullptr) {
        drive.mountPointOffset = sizeof(UnixDrive);
        folder.copy(request.data() + sizeof(UnixDrive), folder.size());
    }
    DWORD returned = 0;
    const BOOL done = DeviceIoControl(manager, kDefineUnixDrive, request.data(), drive.size, nullptr, 0, &returned,
                                      nullptr);
    CloseHandle(manager);
    return done != FALSE;
}

std::string UnixName(const CString& path)
{
    using ToUnix = char*(CDECL*)(const WCHAR*);
    const auto toUnix = reinterpret_cast<ToUnix>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* name = toUnix != nullptr ? toUnix(path) : nullptr;
    if (name == nullptr)
        return std::string();
    const std::string text(name);
    HeapFree(GetProcessHeap(), 0, name);
    return text;
}

}  // namespace

ScratchDrive::ScratchDrive()
{
    const std::string unixFolder = UnixName(m_folder.Path());
    if (unixFolder.empty())
        return;
    for (wchar_t letter = L'Q'; letter <= L'Y'; ++letter) {
        const wchar_t root[] = {letter, L':', L'\\', L'\0'};
        if (GetDriveTypeW(root) != DRIVE_NO_ROOT_DIR)
            continue;
        if (DefineDrive(letter, unixFolder.c_str()))
            m_letter = letter;
        return;
    }
}

ScratchDrive::~ScratchDrive()
{
    if (m_letter != 0)
        DefineDrive(m_letter, nullptr);
}

}  // namespace qmtest
