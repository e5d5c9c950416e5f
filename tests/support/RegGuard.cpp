// RegGuard.cpp - registry clean-up for tests.
#include "support/RegGuard.h"

namespace qmtest {

bool RegKeyExists(HKEY root, const wchar_t* path)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

RegGuard::RegGuard(HKEY root, const wchar_t* path) : m_root(root), m_key(path)
{
    for (int i = 0; (i = m_key.Find(L'\\', i + 1)) > 0;) {
        if (!RegKeyExists(root, m_key.Left(i))) {
            m_key = m_key.Left(i);
            return;
        }
    }
    if (!RegKeyExists(root, m_key))
        return;
    static LONG counter = 0;
    m_backup.Format(L"Software\\QMTestBackup\\%lu-%ld", GetCurrentProcessId(), InterlockedIncrement(&counter));
    HKEY source = nullptr, target = nullptr;
    RegOpenKeyExW(root, m_key, 0, KEY_READ, &source);
    RegCreateKeyExW(HKEY_CURRENT_USER, m_backup, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr);
    RegCopyTreeW(source, nullptr, target);
    RegCloseKey(source);
    RegCloseKey(target);
}

RegGuard::~RegGuard()
{
    RegDeleteTreeW(m_root, m_key);
    RegDeleteKeyW(m_root, m_key);
    if (m_backup.IsEmpty())
        return;
    HKEY source = nullptr, target = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, m_backup, 0, KEY_READ, &source);
    RegCreateKeyExW(m_root, m_key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr);
    RegCopyTreeW(source, nullptr, target);
    RegCloseKey(source);
    RegCloseKey(target);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_backup);
    RegDeleteKeyW(HKEY_CURRENT_USER, m_backup);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\QMTestBackup");   // only when empty
}

void SetRegValue(HKEY root, const wchar_t* path, const wchar_t* name, const wchar_t* value)
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(root, path, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return;
    RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                   static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
}

void SetRegDword(HKEY root, const wchar_t* path, const wchar_t* name, DWORD value)
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(root, path, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return;
    RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof(value));
    RegCloseKey(key);
}

CString GetRegValue(HKEY root, const wchar_t* path, const wchar_t* name)
{
    wchar_t buffer[2048] = {};
    DWORD size = sizeof(buffer) - sizeof(wchar_t);
    if (RegGetValueW(root, path, name, RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
        return L"<missing>";
    return buffer;
}

}  // namespace qmtest
