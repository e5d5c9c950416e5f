// RegistrySandbox.h - a registry key of the test's own under
// HKEY_CURRENT_USER, removed with everything beneath it at the end.
//
//   qmtest::RegistrySandbox reg;                        // HKCU\Software\QMUtilTests\<pid>-<n>
//   QM::SetRegStr(reg.Root(), reg.Sub(L"A\\B"), L"Name", L"v");
//   EXPECT_EQ(reg.ReadRaw(L"A\\B", L"Name"), ...);
//
// The raw helpers call the registry directly, so a test can prepare and check
// values without going through the code under test.
#pragma once
#include <QMUtil.h>

#include <string>

namespace qmtest {

class RegistrySandbox
{
public:
    RegistrySandbox();
    ~RegistrySandbox();
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

    HKEY Root() const { return HKEY_CURRENT_USER; }
    // The sandbox key below Root(), without a trailing backslash.
    const CString& Path() const { return m_path; }
    // Path() + "\" + `relative`; Path() itself for an empty text.
    CString Sub(const wchar_t* relative) const;

    // Writes a value of any type under Sub(`relative`), creating the key.
    bool WriteRaw(const wchar_t* relative, const wchar_t* name, DWORD type, const void* data, DWORD bytes) const;
    bool WriteString(const wchar_t* relative, const wchar_t* name, const std::wstring& text) const;
    // The value's bytes and type; false when the key or the value is missing.
    bool ReadRaw(const wchar_t* relative, const wchar_t* name, std::string& bytes, DWORD* type = nullptr) const;
    bool KeyExists(const wchar_t* relative) const;

private:
    CString m_path;
};

}  // namespace qmtest
