// RegGuard.h - a registry key put back as it was when the guard goes: a
// missing level is deleted whole, an existing key is saved aside and restored.
//   qmtest::RegGuard guard(HKEY_CURRENT_USER, L"Software\\X");   // then change Software\X freely
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
    CString m_key;      // deleted at the end
    CString m_backup;   // its old content, empty when it had none
};

// Writes a REG_SZ value, creating the key as needed.
void SetRegValue(HKEY root, const wchar_t* path, const wchar_t* name, const wchar_t* value);
// A string value's text, or "<missing>".
CString GetRegValue(HKEY root, const wchar_t* path, const wchar_t* name);

}  // namespace qmtest
