// RegistrySandbox.h - a key of the test's own under HKEY_CURRENT_USER,
// deleted with everything beneath it. Write and Read go to the registry
// directly, so a test prepares and checks values without the code under test.
#pragma once
#include <QMUtil.h>

#include <string>

namespace qmtest {

class RegistrySandbox
{
public:
    RegistrySandbox()
    {
        static LONG counter = 0;
        m_path.Format(L"%s\\%lu-%ld", kParent, GetCurrentProcessId(), InterlockedIncrement(&counter));
        RegDeleteTreeW(HKEY_CURRENT_USER, m_path);   // left by a crashed run with the same process id
    }
    ~RegistrySandbox()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, m_path);
        RegDeleteKeyW(HKEY_CURRENT_USER, m_path);
        RegDeleteKeyW(HKEY_CURRENT_USER, kParent);   // refused while another sandbox lives in it
    }
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

    HKEY Root() const { return HKEY_CURRENT_USER; }
    const CString& Path() const { return m_path; }
    CString Sub(const wchar_t* relative) const { return *relative ? m_path + L"\\" + relative : m_path; }
    bool KeyExists(const wchar_t* relative) const
    {
        HKEY key = nullptr;
        const bool open = RegOpenKeyExW(HKEY_CURRENT_USER, Sub(relative), 0, KEY_READ, &key) == ERROR_SUCCESS;
        if (open)
            RegCloseKey(key);
        return open;
    }

    // Creates the key as needed.
    bool Write(const wchar_t* relative, const wchar_t* name, DWORD type, const void* data, DWORD bytes) const
    {
        return RegSetKeyValueW(HKEY_CURRENT_USER, Sub(relative), name, type, data, bytes) == ERROR_SUCCESS;
    }
    bool Write(const wchar_t* relative, const wchar_t* name, const std::wstring& text) const
    {
        return Write(relative, name, REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    // The value's bytes as stored, or "<missing>" (an odd length, so never UTF-16 data).
    std::string Read(const wchar_t* relative, const wchar_t* name, DWORD* type = nullptr) const
    {
        HKEY key = nullptr;
        DWORD size = 0;
        std::string bytes;
        bool ok = RegOpenKeyExW(HKEY_CURRENT_USER, Sub(relative), 0, KEY_READ, &key) == ERROR_SUCCESS &&
                  RegQueryValueExW(key, name, nullptr, type, nullptr, &size) == ERROR_SUCCESS;
        bytes.resize(size);
        ok = ok &&
             RegQueryValueExW(key, name, nullptr, type, reinterpret_cast<BYTE*>(&bytes[0]), &size) == ERROR_SUCCESS;
        if (key != nullptr)
            RegCloseKey(key);
        return ok ? bytes.substr(0, size) : "<missing>";
    }

private:
    static constexpr const wchar_t* kParent = L"Software\\QMUtilTests";
    CString m_path;
};

}  // namespace qmtest
