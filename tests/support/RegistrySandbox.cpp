// RegistrySandbox.cpp - per-test registry keys, deleted as a tree.
#include "support/RegistrySandbox.h"

namespace qmtest {

namespace {

const wchar_t kParent[] = L"Software\\QMUtilTests";

}  // namespace

RegistrySandbox::RegistrySandbox()
{
    static LONG counter = 0;
    // Bounded, so that a registry refusing every key fails the tests rather
    // than hanging them.
    for (int attempt = 0; attempt < 1000; ++attempt) {
        m_path.Format(L"%s\\%lu-%ld", kParent, GetCurrentProcessId(), InterlockedIncrement(&counter));
        HKEY key = nullptr;
        DWORD disposition = 0;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, m_path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                            &disposition) != ERROR_SUCCESS)
            continue;
        RegCloseKey(key);
        // A key left by a crashed run with the same process id is not ours.
        if (disposition == REG_CREATED_NEW_KEY)
            break;
    }
}

RegistrySandbox::~RegistrySandbox()
{
    RegDeleteTreeW(HKEY_CURRENT_USER, m_path);
    RegDeleteKeyW(HKEY_CURRENT_USER, m_path);
    // The shared parent goes once the last sandbox in it is gone; a parent
    // that still has sub-keys refuses to be deleted.
    RegDeleteKeyW(HKEY_CURRENT_USER, kParent);
}

CString RegistrySandbox::Sub(const wchar_t* relative) const
{
    if (relative == nullptr || *relative == L'\0')
        return m_path;
    return m_path + L"\\" + relative;
}

bool RegistrySandbox::WriteRaw(const wchar_t* relative, const wchar_t* name, DWORD type, const void* data,
                               DWORD bytes) const
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, Sub(relative), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr) !=
        ERROR_SUCCESS)
        return false;
    const bool ok = RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes) == ERROR_SUCCESS;
    RegCloseKey(key);
    return ok;
}

bool RegistrySandbox::WriteString(const wchar_t* relative, const wchar_t* name, const std::wstring& text) const
{
    return WriteRaw(relative, name, REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

bool RegistrySandbox::ReadRaw(const wchar_t* relative, const wchar_t* name, std::string& bytes, DWORD* type) const
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, Sub(relative), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    DWORD size = 0, kind = 0;
    bool ok = RegQueryValueExW(key, name, nullptr, &kind, nullptr, &size) == ERROR_SUCCESS;
    if (ok) {
        bytes.assign(size, '\0');
        ok = RegQueryValueExW(key, name, nullptr, &kind, reinterpret_cast<BYTE*>(&bytes[0]), &size) == ERROR_SUCCESS;
        bytes.resize(size);
    }
    RegCloseKey(key);
    if (ok && type != nullptr)
        *type = kind;
    return ok;
}

bool RegistrySandbox::KeyExists(const wchar_t* relative) const
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, Sub(relative), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

}  // namespace qmtest
