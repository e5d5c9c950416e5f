// RegGuard.h - registry keys a test creates or changes, put back as they
// were when the guard goes.
//
//   qmtest::RegGuard guard(HKEY_LOCAL_MACHINE, L"Software\\Autodesk\\AutoCAD\\R16.1");
//   qmtest::SetRegValue(HKEY_LOCAL_MACHINE, L"Software\\Autodesk\\AutoCAD\\R16.1", L"CurVer", L"ACAD-301:804");
//
// The guard finds the first missing level of the path: when one is missing
// it deletes that level with everything below; when the whole key exists it
// copies it aside (under HKCU\Software\QMTestBackup) and copies it back.
#pragma once
#include <QMUtil.h>

namespace qmtest {

class RegGuard
{
public:
    RegGuard(HKEY root, const wchar_t* path);
    ~RegGuard();
    RegGuard(const RegGuard&) = delete;
    RegGuard& operator=(const RegGuard&) = delete;

private:
    HKEY m_root;
    CString m_key;      // the key deleted at the end
    CString m_backup;   // where its old content waits, empty when it had none
};

bool RegKeyExists(HKEY root, const wchar_t* path);
// Creates the key as needed and writes a REG_SZ / REG_DWORD value.
void SetRegValue(HKEY root, const wchar_t* path, const wchar_t* name, const wchar_t* value);
void SetRegDword(HKEY root, const wchar_t* path, const wchar_t* name, DWORD value);
// A string value's text, or "<missing>".
CString GetRegValue(HKEY root, const wchar_t* path, const wchar_t* name);

}  // namespace qmtest
