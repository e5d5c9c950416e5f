// cmd_version.cpp - qmtool version: the tool's and the library's versions.
#include "qmtool.h"
#include "QMBuildVersion.h"

namespace qmtool {
namespace {

// The FILEVERSION of the QMUtil.dll this process loaded, e.g. "1.42.0.0".
CString LibraryFileVersion(CString& path)
{
    HMODULE library = GetModuleHandleW(L"QMUtil.dll");
    wchar_t name[MAX_PATH] = L"";
    if (library == nullptr || GetModuleFileNameW(library, name, MAX_PATH) == 0)
        return CString();
    path = name;
    DWORD ignored = 0;
    DWORD size = GetFileVersionInfoSizeW(name, &ignored);
    if (size == 0)
        return CString();
    std::vector<BYTE> block(size);
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    if (!GetFileVersionInfoW(name, 0, size, block.data()) ||
        !VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &length) || info == nullptr)
        return CString();
    CString version;
    version.Format(L"%u.%u.%u.%u", HIWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionMS),
                   HIWORD(info->dwFileVersionLS), LOWORD(info->dwFileVersionLS));
    return version;
}

int RunVersion(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 0, 0, L"takes no arguments"))
        return bad;
    CString path;
    const CString version = LibraryFileVersion(path);
    CString text;
    text.Format(L"qmtool %s\nQMUtil.dll %s (%s)\n", QM_VERSION_WTEXT, version.GetString(), path.GetString());
    Out(text);
    return kOk;
}

const Command version{L"version", L"version", L"the versions of qmtool and of the QMUtil.dll it loaded",
                      RunVersion, L"qmtool version", L"\"qmtool X.Y\", then \"QMUtil.dll A.B.C.D\" and the source revision"};

}  // namespace
}  // namespace qmtool
