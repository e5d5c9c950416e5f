// Registry.cpp - CKey and the string helpers on the advapi32 registry calls.
#include "config/Registry.h"

#include <cwchar>
#include <vector>

CKey::~CKey()
{
    Close();
}

CKey& CKey::operator=(const CKey& other)
{
    m_hKey = other.m_hKey;
    return *this;
}

void CKey::Close()
{
    if (m_hKey != nullptr)
        RegCloseKey(m_hKey);
    m_hKey = nullptr;
}

int CKey::Create(HKEY parent, const wchar_t* subKey, unsigned long access)
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(parent, subKey, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &key, nullptr) !=
        ERROR_SUCCESS)
        return 0;
    m_hKey = key;
    return 1;
}

int CKey::Open(HKEY parent, const wchar_t* subKey, unsigned long access)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, subKey, 0, access, &key) != ERROR_SUCCESS)
        return 0;
    m_hKey = key;
    return 1;
}

int CKey::SetStringValue(const wchar_t* value, const wchar_t* name)
{
    if (value == nullptr || m_hKey == nullptr)
        return 0;
    const DWORD bytes = static_cast<DWORD>((std::wcslen(value) + 1) * sizeof(wchar_t));
    return RegSetValueExW(m_hKey, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value), bytes) == ERROR_SUCCESS;
}

int CKey::GetStringValue(CString& value, const wchar_t* name)
{
    value.Empty();
    DWORD bytes = 0;
    if (m_hKey == nullptr || RegQueryValueExW(m_hKey, name, nullptr, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
        return 0;
    // One spare character: data of an odd length, or without its NUL, still
    // ends in one.
    std::vector<wchar_t> data(bytes / sizeof(wchar_t) + 2, L'\0');
    if (RegQueryValueExW(m_hKey, name, nullptr, nullptr, reinterpret_cast<BYTE*>(data.data()), &bytes) !=
        ERROR_SUCCESS)
        return 0;
    value = data.data();
    return 1;
}

int CKey::EnumKey(int index, CString& name)
{
    wchar_t buffer[1024];
    DWORD length = 1024;
    if (m_hKey == nullptr || index < 0 ||
        RegEnumKeyExW(m_hKey, static_cast<DWORD>(index), buffer, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
        return 0;
    name = buffer;
    return 1;
}

int CKey::GetSubKeyCount(unsigned long& count)
{
    DWORD subKeys = 0;
    if (m_hKey == nullptr || RegQueryInfoKeyW(m_hKey, nullptr, nullptr, nullptr, &subKeys, nullptr, nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return 0;
    count = subKeys;
    return 1;
}

namespace QM {

bool GetRegStr(HKEY root, const wchar_t* subKey, const wchar_t* name, CString& value)
{
    CKey key;
    if (!key.Open(root, subKey, KEY_QUERY_VALUE))
        return false;
    // 4096 characters of room but a stated size of 4096 bytes: values of
    // more than 2047 characters have always been refused here, and callers
    // treat such a value as absent.
    std::vector<wchar_t> data(4096, L'\0');
    DWORD bytes = 4096;
    if (RegQueryValueExW(key.m_hKey, name, nullptr, nullptr, reinterpret_cast<BYTE*>(data.data()), &bytes) !=
        ERROR_SUCCESS)
        return false;
    value = data.data();
    return true;
}

bool SetRegStr(HKEY root, const wchar_t* subKey, const wchar_t* name, const wchar_t* value)
{
    CKey key;
    if (!key.Create(root, subKey, KEY_READ | KEY_WRITE))
        return false;
    CKey again;
    if (!again.Create(key.m_hKey, L"", KEY_READ | KEY_WRITE))
        return false;
    return again.SetStringValue(value, name) == 1;
}

}  // namespace QM
