// TempDir.h - a fresh folder per test, removed with everything in it.
//   TempDir dir;
//   CString file = dir.Path() + L"a.ini";     // Path() ends with a backslash
#pragma once
#include <QMUtil.h>

#include <ostream>
#include <string>

// Failure messages show a text rather than its address.
inline void PrintTo(const CString& text, std::ostream* out)
{
    char buffer[4096] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, buffer, sizeof(buffer) - 1, nullptr, nullptr);
    *out << '"' << buffer << '"';
}

namespace qmtest {

class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const CString& Path() const { return m_path; }
    // Writes `bytes` to Path() + `name` (folders on the way are created).
    CString WriteFile(const wchar_t* name, const std::string& bytes) const;
    // The whole content of a file, or an empty string when it is missing.
    static std::string ReadFile(const wchar_t* path);

private:
    CString m_path;
};

// Removes a folder tree, clearing read-only attributes on the way.
void RemoveTree(const wchar_t* folder);

// A value as the platform's own profile reader sees it, or "<absent>".
inline CString Profile(const wchar_t* section, const wchar_t* key, const wchar_t* path)
{
    wchar_t buffer[4096];
    GetPrivateProfileStringW(section, key, L"<absent>", buffer, 4096, path);
    return CString(buffer);
}

}  // namespace qmtest
