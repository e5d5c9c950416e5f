// RegGuard.cpp - registry clean-up for tests.
#include "support/RegGuard.h"

namespace qmtest {
namespace {

bool KeyExists(HKEY root, const wchar_t* path)
{
    HKEY key = nullptr;
    const bool exists = RegOpenKeyExW(root, path, 0, KEY_READ, &key) == ERROR_SUCCESS;
    RegCloseKey(key);
    return exists;
}

void CopyKey(HKEY fromRoot, const wchar_t* from, HKEY toRoot, const wchar_t* to)
{
    HKEY source = nullptr, target = nullptr;
    RegOpenKeyExW(fromRoot, from, 0, KEY_READ, &source);
    RegCreateKeyExW(toRoot, to, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr);
    RegCopyTreeW(source, nullptr, target);
    RegCloseKey(source);
    RegCloseKey(target);
}

}  // namespace

RegGuard::RegGuard(HKEY root, const wchar_t* path) : m_root(root), m_key(path)
{
    for (int i = 0; (i = m_key.Find(L'\\', i + 1)) > 0;) {
        if (!KeyExists(root, m_key.Left(i))) {
            m_key = m_key.Left(i);
            return;
        }
    }
    if (!KeyExists(root, m_key))
        return;
    static LONG counter = 0;
    m_backup.Format(L"Software\\QMTestBackup\\%lu-%ld", GetCurrentProcessId(), InterlockedIncrement(&counter));
    CopyKey(root, m_key, HKEY_CURRENT_USER, m_backup);
}

RegGuard::~RegGuard()
{
    RegDeleteTreeW(m_root, m_key);
    if (m_backup.IsEmpty())
        return;
    CopyKey(HKEY_CURRENT_USER, m_backup, m_root, m_key);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_backup);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\QMTestBackup");   // only when empty
}

void SetRegValue(HKEY root, const wchar_t* path, const wchar_t* name, const wchar_t* value)
{
    RegSetKeyValueW(root, path, name, REG_SZ, value, static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t)));
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
